#pragma once

#include <cmath>

#include "gsl/gsl_BBox.h"

/// The length of the union of two intervals beyond the sum of their lengths: the gap where they are
/// apart, 0 or less where they touch or overlap, off by the rounding of the three lengths.
[[nodiscard]] inline double gsl_AxisGap(double lowA, double highA, double lowB,
                                        double highB) noexcept {
    const double low = lowB < lowA ? lowB : lowA;
    const double high = highB > highA ? highB : highA;
    return (high - low) - ((highA - lowA) + (highB - lowB));
}

/// The square of a gap that is positive, else 0.
[[nodiscard]] inline double gsl_SquaredGap(double gap) noexcept { return gap > 0 ? gap * gap : 0; }

/// The Euclidean gap between two boxes; 0 when they overlap or touch. Always inlined, so that loops
/// over pairs of boxes pay for no copies.
///
/// Kept: an empty box has no distance of its own; the formula runs on its crossed corners, so the
/// canonical empty box is sqrt(3) away from any box, where one would expect infinity or a refusal.
/// The octree keeps items without a box by this value when its tolerance is larger.
[[nodiscard, gnu::always_inline]] inline double BoxBoxDistance(gsl_BBox a, gsl_BBox b) noexcept {
    // x and y go side by side, where a comparison selects without a jump; each rounds as if alone.
    using Lanes = double __attribute__((vector_size(16)));
    using Signs = long long __attribute__((vector_size(16)));
    const Lanes lowA = {a.Low().GetX(), a.Low().GetY()};
    const Lanes lowB = {b.Low().GetX(), b.Low().GetY()};
    const Lanes highA = {a.High().GetX(), a.High().GetY()};
    const Lanes highB = {b.High().GetX(), b.High().GetY()};
    const Lanes lengthA = highA - lowA;
    const Lanes lengthB = highB - lowB;
    const Lanes lengthsZ = {a.ZLen(), b.ZLen()};
    // An empty box has a negative length. Adding it to the union is a matter of its own.
    const Signs signs = (Signs)lengthA | (Signs)lengthB | (Signs)lengthsZ;
    if ((signs[0] | signs[1]) < 0) [[unlikely]] {
        gsl_BBox both = a;
        both.Add(b);
        return std::sqrt(gsl_SquaredGap(both.XLen() - (a.XLen() + b.XLen())) +
                         gsl_SquaredGap(both.YLen() - (a.YLen() + b.YLen())) +
                         gsl_SquaredGap(both.ZLen() - (a.ZLen() + b.ZLen())));
    }
    const Lanes low = lowB < lowA ? lowB : lowA;
    const Lanes high = highB > highA ? highB : highA;
    Lanes gap = (high - low) - (lengthA + lengthB);
    Lanes gapZ = {gsl_AxisGap(a.Low().GetZ(), a.High().GetZ(), b.Low().GetZ(), b.High().GetZ()), 0};
    gap = gap > 0 ? gap : Lanes{};
    gapZ = gapZ > 0 ? gapZ : Lanes{};
    return std::sqrt(gap[0] * gap[0] + gap[1] * gap[1] + gapZ[0] * gapZ[0]);
}

/// How far `a` sticks out of `b`: the growth of b's diagonal when `a` is added, as a multiple of
/// a's diagonal. 0 when `a` lies inside `b`.
///
/// Kept: a box `a` of size zero divides by zero: 0/0 (not a number) inside `b`, infinity outside,
/// where one would expect 0 or a test. The octree only asks with boxes of its nodes for `a`.
[[nodiscard]] inline double BoxBoxContainment(gsl_BBox a, gsl_BBox b) noexcept {
    gsl_BBox both = a;
    both.Add(b);
    return (both.Size() - b.Size()) / a.Size();
}
