#include "host/cli/cli_ClearanceView.h"

#include <algorithm>
#include <utility>

#include "host/clearance/clr_Annotations.h"
#include "host/clearance/clr_KindText.h"
#include "host/clearance/clr_SavedCheck.h"
#include "host/cli/cli_ClearanceTable.h"
#include "host/model/hst_Error.h"
#include "host/picture/pic_ModelPicture.h"

namespace {

/// Marks the parts of the findings that have a label and an arrow.
pic_Marking MarkingOf(const clr_Report& report, std::size_t partCount,
                      const annC_AnnotationContainer& annotations) {
    pic_Marking marking;
    marking.marked.resize(partCount);
    const std::size_t labelCount = static_cast<std::size_t>(annotations.Size()) / 2;
    std::size_t labels = labelCount;
    for (const clr_Finding& pair : report.pairs) {
        if (labels == 0) break;
        if (!pair.result.IsFinding()) continue;
        marking.marked[pair.first] = marking.marked[pair.second] = true;
        --labels;
    }
    for (const clr_KindText& kind : clr_KIND_TEXTS) {
        const std::size_t count = report.Count(kind.kind);
        if (kind.kind == clr_Kind::Touching || count == 0) continue;
        marking.legend.push_back({kind.color, std::string(kind.label) + " (" +
                                                  std::to_string(count) +
                                                  (count == 1 ? " pair)" : " pairs)")});
    }
    if (labelCount > 0) {
        marking.legend.push_back({"", labelCount == 1
                                          ? "in colour: the parts of the labelled pair"
                                          : "in colour: the parts of the " +
                                                std::to_string(labelCount) + " labelled pairs"});
    }
    marking.annotations = annotations;
    return marking;
}

}  // namespace

cli_ClearanceView::cli_ClearanceView(const std::vector<hst_Part>& checkedParts,
                                     clr_Report checkReport, std::size_t labelCount,
                                     g3d_SavedViewIdEnum view)
    : parts(&checkedParts), report(std::move(checkReport)) {
    annotations = clr_Annotate(*parts, report, labelCount,
                               {pic_WIDTH, pic_HEIGHT, pic_PlaceOf(*parts, view)});
}

cli_ClearanceView::cli_ClearanceView(const std::vector<hst_Part>& checkedParts,
                                     clr_Report checkReport, const annC_AnnotationContainer& labels)
    : parts(&checkedParts), report(std::move(checkReport)), annotations(labels) {}

cli_ClearanceView cli_ClearanceView::Load(const std::string& file,
                                          const std::vector<hst_Part>& parts,
                                          const hst_SavedCheck& saved) {
    clr_Report report;
    const hst_CheckRecord& record = saved.record;
    report.lengths = {record.gap, record.touch};
    report.seconds = record.seconds;
    report.pairsChecked = record.pairsChecked;
    report.flat = record.flat;
    report.unclear = record.unclear;
    const bool isOfParts = std::equal(
        parts.begin(), parts.end(), record.parts.begin(), record.parts.end(),
        [](const hst_Part& part, const std::string& name) { return part.Name() == name; });
    auto pairs = clr_ReadResultTable(saved.results, parts.size());
    if (!pairs || !isOfParts)
        throw hst_Error(file, "the results of the check are not those of its parts");
    report.pairs = *std::move(pairs);
    return {parts, std::move(report), saved.annotations};
}

hst_SavedCheck cli_ClearanceView::ToSave() const {
    hst_CheckRecord record;
    record.gap = report.lengths.gap;
    record.touch = report.lengths.touch;
    record.seconds = report.seconds;
    record.pairsChecked = static_cast<unsigned>(report.pairsChecked);
    record.flat = report.flat;
    record.unclear = report.unclear;
    for (const hst_Part& part : *parts) record.parts.push_back(part.Name());
    return {record, clr_ResultTable(report), annotations};
}

void cli_ClearanceView::Print(bool json) const {
    const cli_ClearanceTable table(*parts, report);
    cli_Print([&](std::ostream& stream) {
        if (json) {
            table.PrintJson(stream);
        } else {
            table.Print(stream);
        }
    });
}

std::string cli_ClearanceView::Draw(g3d_SavedViewIdEnum view, pic_Format format) const {
    return pic_DrawMarkedModel(*parts, MarkingOf(report, parts->size(), annotations), view, format);
}
