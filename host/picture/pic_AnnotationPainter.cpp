#include "host/picture/pic_AnnotationPainter.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <string>
#include <utility>

#include "ann/annC_Font.h"
#include "ann/annC_NamedAnchor.h"
#include "ann/annC_Point3DAnchor.h"
#include "ann/annC_ViewportAnchor.h"
#include "g3d/g3d_ColorMap.h"
#include "host/model/hst_PartName.h"
#include "host/picture/pic_Shading.h"

namespace {

constexpr std::uint32_t kWhite = 0xffffff;
constexpr std::uint32_t kBlack = 0;
constexpr double kPixelsPerPoint = 96.0 / 72;
constexpr double kHeadSize = 10;  // of a line of no thickness, in pixels
constexpr double kTextPadding = 3;

/// Where one of the nine positions lies in a rectangle from the origin.
annC_Point2D PositionIn(annC_RelativePositionEnm position, double width, double height) {
    return {position % 3 * width / 2, position / 3 * height / 2};
}

/// The lines of a text, each fit to be drawn.
std::vector<std::string> LinesOf(std::string_view text) {
    std::vector<std::string> lines;
    for (;;) {
        const std::size_t end = text.find('\n');
        lines.push_back(hst_CleanName(text.substr(0, end)));
        if (end == std::string_view::npos) return lines;
        text.remove_prefix(end + 1);
    }
}

double ThicknessOf(annC_LineThicknessEnm thickness) { return 1 + static_cast<int>(thickness); }

/// Puts the dashes of a line style into the painter; false for a line that is not drawn.
bool SetDashes(cairo_t* context, annC_LineStyleEnm style, double thickness) {
    const double dot = thickness;
    const double gap = 2 + thickness;
    const double dash = 6 + thickness;
    const double dotted[] = {dot, gap};
    const double dashed[] = {dash, gap};
    const double dotDash[] = {dash, gap, dot, gap};
    switch (style) {
        case annC_LINE_SOLID:
            cairo_set_dash(context, nullptr, 0, 0);
            return true;
        case annC_LINE_DOTTED:
            cairo_set_dash(context, dotted, 2, 0);
            return true;
        case annC_LINE_DASHED:
            cairo_set_dash(context, dashed, 2, 0);
            return true;
        case annC_LINE_DOT_DASH:
            cairo_set_dash(context, dotDash, 4, 0);
            return true;
        case annC_LINE_NONE:
            break;
    }
    return false;
}

bool IsFinite(const annC_Point2D& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

/// Keeps what is set in the painter until the end of the scope, then sets it back.
class Saved {
  public:
    explicit Saved(cairo_t* painter) : context(painter) { cairo_save(context); }
    ~Saved() { cairo_restore(context); }
    Saved(const Saved&) = delete;
    Saved& operator=(const Saved&) = delete;

  private:
    cairo_t* context;
};

/// The lines of a text and the box around them, in the font that the painter has.
struct TextLayout {
    TextLayout(cairo_t* context, const annC_Text& text) : lines(LinesOf(text.GetText().View())) {
        cairo_font_extents(context, &font);
        for (const std::string& line : lines) {
            cairo_text_extents_t extents;
            cairo_text_extents(context, line.c_str(), &extents);
            widths.push_back(extents.x_advance);
        }
        width = *std::max_element(widths.begin(), widths.end()) + 2 * kTextPadding;
        height = font.height * static_cast<double>(lines.size()) + 2 * kTextPadding;
    }

    std::vector<std::string> lines;
    std::vector<double> widths;
    cairo_font_extents_t font{};
    double width = 0;
    double height = 0;
};

void SelectFont(cairo_t* context, const annC_Font& font) {
    cairo_select_font_face(context, std::string(font.Family().View()).c_str(),
                           font.IsSlanted() ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                           font.IsBold() ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context, font.SizePt() * kPixelsPerPoint);
}

}  // namespace

pic_AnnotationPainter::pic_AnnotationPainter(cairo_t* painter, pic_Viewport pictureViewport)
    : context(painter), viewport(std::move(pictureViewport)) {}

void pic_AnnotationPainter::Paint(const annC_AnnotationContainer& annotations) {
    std::vector<const annC_Annotation*> frontToBack;
    for (annC_AnnotationContainerIT it(annotations); !it.IsDone(); it.Next()) {
        frontToBack.push_back(annotations.ConstGet(it.CurrentId()));
    }
    for (auto it = frontToBack.rbegin(); it != frontToBack.rend(); ++it) {
        if (const auto* arrow = dynamic_cast<const annC_Arrow*>(*it)) Paint(*arrow);
        if (const auto* text = dynamic_cast<const annC_Text*>(*it)) Paint(*text);
    }
}

annC_Point2D pic_AnnotationPainter::PlaceOf(const annC_Anchor& anchor,
                                            const annC_Point2D& displacement) const {
    annC_Point2D place;
    if (const auto* named = dynamic_cast<const annC_NamedAnchor*>(&anchor)) {
        place = PositionIn(named->GetPosition(), viewport.width, viewport.height);
    } else if (const auto* point = dynamic_cast<const annC_Point3DAnchor*>(&anchor)) {
        place = viewport.project(gsl_Point(point->GetX(), point->GetY(), point->GetZ()));
    } else if (const auto* pixel = dynamic_cast<const annC_ViewportAnchor*>(&anchor)) {
        place = {pixel->GetX(), pixel->GetY()};
    }
    return {place.x + displacement.x, place.y + displacement.y};
}

void pic_AnnotationPainter::Paint(const annC_Arrow& arrow) {
    const annC_Point2D from = PlaceOf(arrow.ConstGetStartAnchor(), arrow.GetStartPoint());
    const annC_Point2D to = PlaceOf(arrow.ConstGetEndAnchor(), arrow.GetEndPoint());
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    if (!IsFinite(from) || !IsFinite(to) || !(length > 0)) return;
    const annC_Point2D along{(to.x - from.x) / length, (to.y - from.y) / length};
    const double startGap = arrow.GetStartGap();
    const double endGap = arrow.GetEndGap();
    const annC_Point2D start{from.x + startGap * along.x, from.y + startGap * along.y};
    const annC_Point2D end{to.x - endGap * along.x, to.y - endGap * along.y};
    if (!IsFinite(start) || !IsFinite(end)) return;

    const Saved saved(context);
    const double thickness = ThicknessOf(arrow.GetLineThickness());
    cairo_set_line_width(context, thickness);
    SetColor(arrow.GetColor(), kWhite);
    if (startGap + endGap < length && SetDashes(context, arrow.GetLineStyle(), thickness)) {
        cairo_move_to(context, start.x, viewport.height - start.y);
        cairo_line_to(context, end.x, viewport.height - end.y);
        cairo_stroke(context);
    }
    cairo_set_dash(context, nullptr, 0, 0);
    const double size = kHeadSize + 2 * thickness;
    const double angleRad = std::atan2(along.y, along.x);
    PaintHead(arrow.GetStartHeadStyle(), start, angleRad + std::numbers::pi, size);
    PaintHead(arrow.GetEndHeadStyle(), end, angleRad, size);
}

/// The head with its tip, or the middle of a circle, diamond or square, at `tip`.
void pic_AnnotationPainter::PaintHead(annC_ArrowHeadStyleEnm style, const annC_Point2D& tip,
                                      double angleRad, double size) {
    if (style == annC_HEAD_NONE) return;
    const Saved saved(context);
    cairo_translate(context, tip.x, viewport.height - tip.y);
    cairo_rotate(context, -angleRad);
    const double half = size / 2;
    const bool isFilled = style == annC_HEAD_FILLED_ARROW || style == annC_HEAD_FILLED_CIRCLE ||
                          style == annC_HEAD_FILLED_DIAMOND || style == annC_HEAD_FILLED_SQUARE;
    switch (style) {
        case annC_HEAD_ARROW:
        case annC_HEAD_FILLED_ARROW:
            cairo_move_to(context, -size, half * 0.7);
            cairo_line_to(context, 0, 0);
            cairo_line_to(context, -size, -half * 0.7);
            if (isFilled) cairo_close_path(context);
            break;
        case annC_HEAD_HOLLOW_CIRCLE:
        case annC_HEAD_FILLED_CIRCLE:
            cairo_arc(context, 0, 0, half * 0.7, 0, 2 * std::numbers::pi);
            break;
        case annC_HEAD_HOLLOW_DIAMOND:
        case annC_HEAD_FILLED_DIAMOND:
            cairo_rotate(context, std::numbers::pi / 4);
            [[fallthrough]];
        case annC_HEAD_HOLLOW_SQUARE:
        case annC_HEAD_FILLED_SQUARE:
            cairo_rectangle(context, -half * 0.7, -half * 0.7, size * 0.7, size * 0.7);
            break;
        case annC_HEAD_NONE:
            break;
    }
    if (isFilled) {
        cairo_fill(context);
    } else {
        cairo_stroke(context);
    }
}

void pic_AnnotationPainter::Paint(const annC_Text& text) {
    const annC_Point2D place = PlaceOf(text.ConstGetAnchor(), text.GetOffset());
    if (!IsFinite(place) || !std::isfinite(text.GetRotationAngle())) return;
    const Saved saved(context);
    SelectFont(context, annC_Font(text.GetFont()));
    const TextLayout layout(context, text);
    const double width = layout.width;
    const double height = layout.height;

    annC_Point2D reference;
    if (const auto* named = dynamic_cast<const annC_NamedAnchor*>(&text.ConstGetReferencePoint())) {
        reference = PositionIn(named->GetPosition(), width, height);
    }
    cairo_translate(context, place.x, viewport.height - place.y);
    cairo_rotate(context, -text.GetRotationAngle() * std::numbers::pi / 180);
    cairo_translate(context, -reference.x, reference.y - height);  // to the upper left corner
    cairo_rectangle(context, 0, 0, width, height);
    if (text.GetBackgroundStyle() == annC_BACKGROUND_MATCH) SetColor(viewport.background);
    if (text.GetBackgroundStyle() == annC_BACKGROUND_OTHER) {
        SetColor(text.GetBackgroundColor(), kBlack);
    }
    if (text.GetBackgroundStyle() != annC_BACKGROUND_TRANSPARENT) cairo_fill_preserve(context);
    SetColor(text.GetColor(), kWhite);
    if (text.HasBox()) cairo_stroke_preserve(context);
    cairo_new_path(context);
    for (std::size_t i = 0; i < layout.lines.size(); ++i) {
        const double room = width - 2 * kTextPadding - layout.widths[i];
        cairo_move_to(
            context, kTextPadding + room * static_cast<int>(text.GetJustification()) / 2,
            kTextPadding + layout.font.ascent + layout.font.height * static_cast<double>(i));
        cairo_show_text(context, layout.lines[i].c_str());
    }
}

void pic_AnnotationPainter::PaintLegend(const std::vector<pic_LegendEntry>& legend) {
    constexpr double kSquare = 14;
    constexpr double kToText = 1.5 * kSquare;
    constexpr double kBetween = 28;
    constexpr double kBottom = 18;
    const Saved saved(context);
    SelectFont(context, annC_Font(annC_Font::kDefault));
    std::vector<double> widths;
    double whole = -kBetween;
    for (const pic_LegendEntry& entry : legend) {
        cairo_text_extents_t extents;
        cairo_text_extents(context, entry.text.c_str(), &extents);
        widths.push_back((entry.color.empty() ? 0 : kToText) + extents.x_advance);
        whole += widths.back() + kBetween;
    }
    double x = (viewport.width - whole) / 2;
    const double y = viewport.height - kBottom;
    for (std::size_t i = 0; i < legend.size(); ++i) {
        const bool hasSquare = !legend[i].color.empty();
        if (hasSquare) {
            SetColor(cow_String(legend[i].color), kBlack);
            cairo_rectangle(context, x, y - kSquare, kSquare, kSquare);
            cairo_fill(context);
        }
        SetColor(kBlack);
        cairo_move_to(context, x + (hasSquare ? kToText : 0), y - 1);
        cairo_show_text(context, legend[i].text.c_str());
        x += widths[i] + kBetween;
    }
}

void pic_AnnotationPainter::SetColor(std::uint32_t rgb) {
    cairo_set_source_rgb(context, (rgb >> 16) / 255.0, (rgb >> 8 & 0xff) / 255.0,
                         (rgb & 0xff) / 255.0);
}

void pic_AnnotationPainter::SetColor(const cow_String& name, std::uint32_t fallback) {
    const g3d_Color* color = g3d_ColorMap::Instance().Find(atr_String(name));
    SetColor(color ? pic_PackedColor(*color) : fallback);
}

annC_Point2D pic_TextSize(const annC_Text& text) {
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, 1, 1), &cairo_surface_destroy);
    const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> context(cairo_create(surface.get()),
                                                                     &cairo_destroy);
    SelectFont(context.get(), annC_Font(text.GetFont()));
    const TextLayout layout(context.get(), text);
    return {layout.width, layout.height};
}
