#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/clearance/clr_Check.h"
#include "host/model/hst_Part.h"

/// A finding of one check that the other has not, or has otherwise.
struct clr_Change {
    std::string first;  ///< the names of the parts
    std::string second;
    std::optional<clr_PairResult> before;  ///< nothing: the finding is new
    std::optional<clr_PairResult> after;   ///< nothing: it is gone
};

/// What became of the findings from one check to another: gone, new and changed ones by the names
/// of their parts. A finding has changed when it is of another kind, or when its length differs by
/// more than the larger of the two touch lengths.
[[nodiscard]] std::vector<clr_Change> clr_FindChanges(const std::vector<hst_Part>& partsBefore,
                                                      const clr_Report& before,
                                                      const std::vector<hst_Part>& partsAfter,
                                                      const clr_Report& after);
