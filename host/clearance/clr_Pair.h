#pragma once

#include "host/clearance/clr_Body.h"

/// How two parts stand to each other, in the order of a report.
enum class clr_Kind {
    Crossing,  ///< the surfaces meet, and a point of one lies deeper in the other than the touch
               ///< length
    Enclosed,  ///< the surfaces are farther apart than the touch length, and one part is in the
               ///< other
    Touching,  ///< neither, and the surfaces are no farther apart than the touch length
    TooClose,  ///< none of these, and the surfaces are nearer than the gap
    Clear,     ///< none of these
};

/// The two lengths of a check, in model units, never below 0. `gap` is the clearance that parts
/// must keep, `touch` the band within which surfaces count as touching and not as interfering.
struct clr_Lengths {
    double gap = 0;
    double touch = 0;
};

/// What a check finds out about two parts.
struct clr_PairResult {
    clr_Kind kind = clr_Kind::Clear;
    /// Of a crossing the depth: the largest distance to the other part's surface over the points of
    /// either surface that lie inside the other, taken at corners and at the middle of each stretch
    /// of an edge inside the other. Else the clearance: the least distance of the surfaces.
    double length = 0;
    clr_Vec onFirst;             ///< where it is reached, on (or, of a crossing, in) the first part
    clr_Vec onSecond;            ///< and on the second
    bool firstUnclear = false;   ///< whether a point lies inside the first part had no clear answer
    bool secondUnclear = false;  ///< and the second

    [[nodiscard]] bool IsFinding() const noexcept {
        return kind == clr_Kind::Crossing || kind == clr_Kind::Enclosed ||
               kind == clr_Kind::TooClose;
    }
};

/// Decides how two bodies stand to each other. The result of a clear pair holds no points.
[[nodiscard]] clr_PairResult clr_CheckPair(const clr_Body& first, const clr_Body& second,
                                           const clr_Lengths& lengths);
