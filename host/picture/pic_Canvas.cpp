#include "host/picture/pic_Canvas.h"

#include <cairo-svg.h>
#include <cairo.h>

#include <cstring>
#include <utility>

#include "host/model/hst_Error.h"
#include "host/picture/pic_VisiblePieces.h"

namespace {

constexpr double kHairline = 1;  // pixels

cairo_status_t Append(void* bytes, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

void Require(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw hst_Error(std::string("the picture cannot be drawn: ") +
                        cairo_status_to_string(status));
    }
}

}  // namespace

void pic_Canvas::Release::operator()(cairo_t* painter) const noexcept { cairo_destroy(painter); }

void pic_Canvas::Release::operator()(cairo_surface_t* target) const noexcept {
    cairo_surface_destroy(target);
}

pic_Canvas::pic_Canvas(pic_Format fileFormat, int widthPixels, int heightPixels,
                       std::uint32_t backgroundRgb)
    : format(fileFormat), width(widthPixels), height(heightPixels), background(backgroundRgb) {
    if (format == pic_Format::Svg) {
        surface.reset(cairo_svg_surface_create_for_stream(&Append, &bytes, width, height));
        cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
    } else {
        surface.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
    }
    context.reset(cairo_create(surface.get()));
    Require(cairo_status(context.get()));
    cairo_set_line_width(context.get(), kHairline);
    cairo_set_line_join(context.get(), CAIRO_LINE_JOIN_BEVEL);
    SetColor(background);
    cairo_paint(context.get());
}

void pic_Canvas::SetColor(std::uint32_t rgb) {
    cairo_set_source_rgb(context.get(), (rgb >> 16) / 255.0, (rgb >> 8 & 0xff) / 255.0,
                         (rgb & 0xff) / 255.0);
}

void pic_Canvas::PaintScene(const pic_Scene& scene) {
    if (format == pic_Format::Png) {
        PaintPixels(pic_Rasterise(scene, background, width, height));
        return;
    }
    std::vector<pic_Face> ghosts = pic_VisiblePieces(scene.ghosts, width, height);
    for (pic_Face& ghost : ghosts) ghost.rgb = pic_MixedColor(ghost.rgb, background);
    PaintPaths(ghosts);
    PaintPaths(pic_VisiblePieces(scene.faces, width, height));
}

void pic_Canvas::PaintPixels(const std::vector<std::uint32_t>& pixels) {
    cairo_surface_flush(surface.get());
    unsigned char* line = cairo_image_surface_get_data(surface.get());
    const auto count = static_cast<std::size_t>(width);
    for (std::size_t row = 0; row < static_cast<std::size_t>(height); ++row) {
        std::memcpy(line, pixels.data() + row * count, count * sizeof(std::uint32_t));
        line += cairo_image_surface_get_stride(surface.get());
    }
    cairo_surface_mark_dirty(surface.get());
}

/// Pieces of one colour make one path. A hairline in the colour of the fill closes the seams that
/// smoothed edges leave between paths.
void pic_Canvas::PaintPaths(const std::vector<pic_Face>& pieces) {
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const auto& [a, b, c] = pieces[i].corners;
        cairo_move_to(context.get(), a.x, a.y);
        cairo_line_to(context.get(), b.x, b.y);
        cairo_line_to(context.get(), c.x, c.y);
        cairo_close_path(context.get());
        if (i + 1 < pieces.size() && pieces[i + 1].rgb == pieces[i].rgb) continue;
        SetColor(pieces[i].rgb);
        cairo_fill_preserve(context.get());
        cairo_stroke(context.get());
    }
}

std::string pic_Canvas::Finish() {
    Require(cairo_status(context.get()));
    if (format == pic_Format::Png) {
        Require(cairo_surface_write_to_png_stream(surface.get(), &Append, &bytes));
    } else {
        cairo_surface_finish(surface.get());
        Require(cairo_surface_status(surface.get()));
    }
    return std::move(bytes);
}
