#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/clearance/clr_Pair.h"
#include "host/model/hst_Part.h"

/// Two parts that stand in the result of a check, by their numbers in the assembly; the name of
/// `first` sorts before that of `second`, byte by byte.
struct clr_Finding {
    std::size_t first;
    std::size_t second;
    clr_PairResult result;
};

/// What a check of an assembly found.
struct clr_Report {
    clr_Lengths lengths;
    double seconds = 0;  ///< how long it took, set by the caller
    /// Crossing pairs (deepest first), enclosed, touching, too close (nearest first each), then by
    /// names. Clear pairs are left out.
    std::vector<clr_Finding> pairs;
    std::size_t pairsChecked = 0;   ///< pairs of parts, ignored ones left out
    std::set<std::string> flat;     ///< parts without area, which were left out
    std::set<std::string> unclear;  ///< parts of which it is not clear what lies inside

    [[nodiscard]] std::size_t Count(clr_Kind kind) const;
    [[nodiscard]] bool HasFindings() const;
};

/// Names of two parts that are not held against each other, in either order.
using clr_IgnoredPairs = std::set<std::pair<std::string, std::string>>;

/// Checks every pair of parts of an assembly whose names differ. The work is shared by the threads
/// of the machine; the result does not depend on their number, nor on the order of the parts.
/// `onProgress` hears on the calling thread how many pairs are done, of those whose boxes are near
/// enough to look at the surfaces; what it throws ends the check.
[[nodiscard]] clr_Report clr_Check(const std::vector<hst_Part>& parts, const clr_Lengths& lengths,
                                   const clr_IgnoredPairs& ignored,
                                   const std::function<void(std::size_t, std::size_t)>& onProgress);

/// The touch length of an assembly for which none is given: a millionth of the diagonal of its box,
/// since readers of mesh files hand over single precision.
[[nodiscard]] double clr_DefaultTouch(const std::vector<hst_Part>& parts);
