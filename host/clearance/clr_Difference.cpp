#include "host/clearance/clr_Difference.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace {

using Names = std::pair<std::string, std::string>;

std::map<Names, clr_PairResult> FindingsByName(const std::vector<hst_Part>& parts,
                                               const clr_Report& report) {
    std::map<Names, clr_PairResult> findings;
    for (const clr_Finding& pair : report.pairs) {
        if (!pair.result.IsFinding()) continue;
        findings.emplace(Names(parts[pair.first].Name(), parts[pair.second].Name()), pair.result);
    }
    return findings;
}

}  // namespace

std::vector<clr_Change> clr_FindChanges(const std::vector<hst_Part>& partsBefore,
                                        const clr_Report& before,
                                        const std::vector<hst_Part>& partsAfter,
                                        const clr_Report& after) {
    const double touch = std::max(before.lengths.touch, after.lengths.touch);
    const auto old = FindingsByName(partsBefore, before);
    const auto now = FindingsByName(partsAfter, after);
    std::map<Names, clr_Change> changes;
    for (const auto& [names, result] : old) {
        const auto found = now.find(names);
        if (found == now.end()) {
            changes[names] = {names.first, names.second, result, std::nullopt};
        } else if (result.kind != found->second.kind ||
                   std::abs(result.length - found->second.length) > touch) {
            changes[names] = {names.first, names.second, result, found->second};
        }
    }
    for (const auto& [names, result] : now) {
        if (!old.contains(names))
            changes[names] = {names.first, names.second, std::nullopt, result};
    }
    std::vector<clr_Change> list;
    for (auto& [names, change] : changes) list.push_back(std::move(change));
    return list;
}
