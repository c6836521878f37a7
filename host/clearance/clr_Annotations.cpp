#include "host/clearance/clr_Annotations.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "ann/annC_Arrow.h"
#include "ann/annC_NamedAnchor.h"
#include "ann/annC_Point3DAnchor.h"
#include "ann/annC_Text.h"
#include "ann/annC_ViewportAnchor.h"
#include "host/clearance/clr_KindText.h"
#include "host/model/hst_PartName.h"

namespace {

// In pixels; three lines of the default font stand in a label.
constexpr double kMargin = 16;
constexpr double kLabelWidth = 240;
constexpr double kLabelHeight = 76;
constexpr double kArrowGap = 6;
constexpr std::size_t kNameLength = 24;

/// A label on its way to a place at a margin.
struct Label {
    std::size_t rank;  ///< from 0, in the order of the report
    const clr_Finding* finding;
    gsl_Point place;
    annC_Point2D spot;  ///< of the place in the picture
    double height;      ///< of the middle of the label in the picture
};

gsl_Point MiddleOf(const clr_PairResult& result) {
    const clr_Vec middle = 0.5 * (result.onFirst + result.onSecond);
    return {middle.x, middle.y, middle.z};
}

/// The name, cut where it is too long for a label.
std::string ShortName(const std::string& name) {
    if (name.size() <= kNameLength) return name;
    std::size_t end = kNameLength - 3;
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end;
    return name.substr(0, end) + "...";
}

std::string TextOf(const Label& label, const std::vector<hst_Part>& parts) {
    char length[32];
    std::snprintf(length, sizeof length, "%.4g", label.finding->result.length);
    return std::to_string(label.rank + 1) + "  " + clr_TextOf(label.finding->result.kind).label +
           ' ' + length + '\n' + ShortName(parts[label.finding->first].Name()) + '\n' +
           ShortName(parts[label.finding->second].Name());
}

/// Moves the labels of one margin, sorted from the top, apart: first down, then up from the bottom.
void Spread(std::vector<Label>& labels, double pictureHeight) {
    double room = pictureHeight - kMargin - kLabelHeight / 2;
    for (Label& label : labels) {
        label.height = std::min(label.height, room);
        room = label.height - kLabelHeight;
    }
    room = kMargin + kLabelHeight / 2;
    for (auto label = labels.rbegin(); label != labels.rend(); ++label) {
        label->height = std::max(label->height, room);
        room = label->height + kLabelHeight;
    }
}

void AddLabel(const Label& label, bool isLeft, double width, const std::vector<hst_Part>& parts,
              annC_AnnotationContainer& annotations) {
    const char* color = clr_TextOf(label.finding->result.kind).color;
    const double inner = isLeft ? kMargin + kLabelWidth : width - kMargin - kLabelWidth;
    const std::string number = std::to_string(label.rank + 1);

    annC_Text text;
    text.SetText(cow_String(TextOf(label, parts)));
    text.SetAnchor(annC_ViewportAnchor(inner, label.height));
    text.SetReferencePoint(
        annC_NamedAnchor(isLeft ? annC_POSITION_CENTER_RIGHT : annC_POSITION_CENTER_LEFT));
    text.SetJustification(isLeft ? annC_JUSTIFIED_RIGHT : annC_JUSTIFIED_LEFT);
    text.SetColor(color);
    text.SetBackgroundStyle(annC_BACKGROUND_MATCH);

    annC_Arrow arrow;
    arrow.SetStartAnchor(annC_ViewportAnchor(inner, label.height));
    arrow.SetEndAnchor(
        annC_Point3DAnchor(label.place.GetX(), label.place.GetY(), label.place.GetZ()));
    arrow.SetStartGap(kArrowGap);
    arrow.SetColor(color);
    arrow.SetLineThickness(annC_THICKNESS_THIN);

    annotations.Insert(cow_String("arrow " + number), arrow);
    annotations.Insert(cow_String("label " + number), text);
}

}  // namespace

annC_AnnotationContainer clr_Annotate(const std::vector<hst_Part>& parts, const clr_Report& report,
                                      std::size_t count, const clr_Viewport& viewport) {
    const double room = (viewport.height - 2 * kMargin) / kLabelHeight;
    count = std::min(count, 2 * static_cast<std::size_t>(std::max(room, 0.0)));
    std::vector<Label> all;
    for (const clr_Finding& finding : report.pairs) {
        if (all.size() == count) break;
        if (!finding.result.IsFinding()) continue;
        const gsl_Point place = MiddleOf(finding.result);
        const annC_Point2D spot = viewport.project(place);
        all.push_back({all.size(), &finding, place, spot, spot.y});
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Label& a, const Label& b) { return a.spot.x < b.spot.x; });
    const auto half = all.begin() + static_cast<std::ptrdiff_t>((all.size() + 1) / 2);
    std::vector<Label> margins[2] = {{all.begin(), half}, {half, all.end()}};
    annC_AnnotationContainer annotations;
    for (std::vector<Label>& labels : margins) {
        std::stable_sort(labels.begin(), labels.end(),
                         [](const Label& a, const Label& b) { return a.height > b.height; });
        Spread(labels, viewport.height);
        for (const Label& label : labels) {
            AddLabel(label, &labels == margins, viewport.width, parts, annotations);
        }
    }
    return annotations;
}
