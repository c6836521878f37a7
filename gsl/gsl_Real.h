#pragma once

#include "cow/KTSOvuGeomExport.h"

/// True when `b` lies within `tol` of `a`: -tol <= b - a <= tol. NaN equals nothing.
[[nodiscard]] constexpr bool gsl_RealEqual(double a, double b, double tol) noexcept {
    return -tol <= b - a && b - a <= tol;
}

/// True when a >= b - tol, evaluated as written.
[[nodiscard]] constexpr bool gsl_RealGreaterEqual(double a, double b, double tol) noexcept {
    return a >= b - tol;
}

/// True when a <= b + tol, evaluated as written.
[[nodiscard]] constexpr bool gsl_RealLessEqual(double a, double b, double tol) noexcept {
    return a <= b + tol;
}

/// True when `a` and `b` are the same number, or when their mantissas, rounded half up to `digits`
/// significant decimal digits and written as integers, agree. False for more than 15 digits (beyond
/// those a double holds no decimal digit for sure) unless a == b. The mantissa of 0 is 0;
/// infinities and NaN equal only what compares equal by itself.
///
/// Kept: the integers are compared without their exponents, so `gsl_RealEqualDig(1, 10, 3)` is true
/// (100 and 100), and rounding up into the next decade makes `gsl_RealEqualDig(9.9996, 10, 4)`
/// false (10000 and 1000). A comparison of rounded values would answer the other way round; callers
/// compare numbers of one order of magnitude and stored decisions depend on the answers.
[[nodiscard]] KTSOVUGEOM_API bool gsl_RealEqualDig(double a, double b, int digits) noexcept;
