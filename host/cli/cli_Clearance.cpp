#include "host/cli/cli_Clearance.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "host/clearance/clr_Arrangement.h"
#include "host/clearance/clr_Difference.h"
#include "host/clearance/clr_KindText.h"
#include "host/cli/cli_ClearanceView.h"
#include "host/cli/cli_Columns.h"
#include "host/model/hst_Error.h"

namespace {

void RequireLength(const std::string& option, double length) {
    if (std::isfinite(length) && length >= 0) return;
    throw hst_Error(option, "takes a length that is finite and not negative");
}

/// Tells the state of a check on the line of progress, with what is left by the time taken so far.
class CheckProgress {
  public:
    CheckProgress(cli_Progress& progressLine, std::size_t partCount)
        : line(progressLine), parts(partCount) {}

    void operator()(std::size_t done, std::size_t count) const {
        std::string text = "checking " + std::to_string(parts) + " parts: pair " +
                           std::to_string(done) + " of " + std::to_string(count);
        if (done > 0) {
            const double left =
                Seconds() * static_cast<double>(count - done) / static_cast<double>(done);
            text +=
                ", about " + std::to_string(static_cast<long long>(std::ceil(left))) + " s left";
        }
        const double fraction =
            count == 0 ? 1 : static_cast<double>(done) / static_cast<double>(count);
        line.Show(Bar(fraction) + ' ' + text);
    }
    [[nodiscard]] double Seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

  private:
    static std::string Bar(double fraction) {
        constexpr int kWidth = 20;
        const auto full = static_cast<std::size_t>(fraction * kWidth);
        return '[' + std::string(full, '#') + std::string(kWidth - full, '.') + ']';
    }

    cli_Progress& line;
    std::size_t parts;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

clr_Report Check(const std::vector<hst_Part>& parts, const cli_ClearanceRequest& request,
                 cli_Progress& progress) {
    const clr_Lengths lengths{request.gap, request.touch.value_or(clr_DefaultTouch(parts))};
    const clr_IgnoredPairs ignored = clr_FindIgnoredPairs(parts, request.ignored);
    const CheckProgress onProgress(progress, parts.size());
    clr_Report report = clr_Check(parts, lengths, ignored, onProgress);
    report.seconds = onProgress.Seconds();
    if (report.flat.size() == parts.size()) {
        throw hst_Error(request.models.front(), "no part has a surface with an area");
    }
    return report;
}

std::string List(const std::set<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "'" : ", '") + name + "'";
    return text;
}

void Warn(const clr_Report& report, int renamed) {
    if (renamed > 0) {
        cli_Warn(std::to_string(renamed) +
                 (renamed == 1 ? " part has the name of another one; it bears"
                               : " parts have the names of others; they bear") +
                 " '#2', '#3' and so on behind it");
    }
    if (!report.flat.empty()) {
        cli_Warn("left out, since no triangle has an area: " + List(report.flat));
    }
    if (!report.unclear.empty()) {
        cli_Warn("not closed or inside out, so that what lies inside is uncertain: " +
                 List(report.unclear));
    }
}

/// A saved check with its parts.
struct Saved {
    hst_SavedModel model;
    clr_Report report;
};

Saved LoadCheck(const std::string& file) {
    Saved saved{hst_Database(file, hst_Database::Access::Read).Load(), {}};
    if (!saved.model.check) throw hst_Error(file, "holds no clearance check");
    saved.report = cli_ClearanceView::Load(file, saved.model.parts, *saved.model.check).Report();
    return saved;
}

double LengthOf(const std::optional<clr_PairResult>& result) { return result ? result->length : 0; }

std::string Described(const std::optional<clr_PairResult>& result, const cli_NumberFormat& format) {
    if (!result) return "-";
    return std::string(clr_TextOf(result->kind).label) + ' ' + format.Text(result->length);
}

void PrintChanges(std::ostream& stream, const std::vector<clr_Change>& changes) {
    double largest = 0;
    for (const clr_Change& change : changes) {
        largest = std::max({largest, LengthOf(change.before), LengthOf(change.after)});
    }
    const cli_NumberFormat format(largest);
    cli_Columns columns(3);
    columns.Add({"change", "part A", "part B", "before", "after"});
    columns.AddRule();
    for (const clr_Change& change : changes) {
        const char* what = !change.before ? "new" : !change.after ? "gone" : "changed";
        columns.Add({what, change.first, change.second, Described(change.before, format),
                     Described(change.after, format)});
    }
    if (!changes.empty()) columns.Print(stream);
    stream << "total: " << changes.size() << (changes.size() == 1 ? " difference" : " differences")
           << '\n';
}

}  // namespace

bool cli_Clearance(const cli_ClearanceRequest& request) {
    RequireLength("--gap", request.gap);
    if (request.touch) RequireLength("--touch", *request.touch);
    cli_Progress progress;
    cli_RequireWritable(request.database, request.picture);
    cli_Assembly assembly = cli_ReadModels(request.models, request.limits, progress);
    clr_MoveParts(assembly.parts, request.moves);
    const cli_ClearanceView view(assembly.parts, Check(assembly.parts, request, progress),
                                 request.labelCount, request.picture.view);
    const hst_SavedCheck check = view.ToSave();
    cli_Write(
        request.picture, [&](pic_Format format) { return view.Draw(request.picture.view, format); },
        {request.database, assembly.parts, &check}, progress);
    progress.Clear();
    Warn(view.Report(), assembly.renamed);
    view.Print(request.json);
    return view.Report().HasFindings();
}

bool cli_Diff(const cli_DiffRequest& request) {
    const Saved before = LoadCheck(request.before);
    const Saved after = LoadCheck(request.after);
    const std::vector<clr_Change> changes =
        clr_FindChanges(before.model.parts, before.report, after.model.parts, after.report);
    cli_Print([&](std::ostream& stream) { PrintChanges(stream, changes); });
    return !changes.empty();
}
