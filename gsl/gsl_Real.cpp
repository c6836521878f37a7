#include "gsl/gsl_Real.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace {

constexpr int kMaxDigits = 15;
/// The powers of ten that a double holds exactly: pow() differs between platforms.
constexpr double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr std::int64_t kLargestPower = 22;

/// value * 10^power. A negative power divides, since 10^-n is inexact.
double ScaledByPowerOfTen(double value, std::int64_t power) noexcept {
    for (; power > kLargestPower && std::isfinite(value); power -= kLargestPower)
        value *= kExactPowers[kLargestPower];
    for (; power < -kLargestPower && value != 0; power += kLargestPower)
        value /= kExactPowers[kLargestPower];
    if (value == 0 || !std::isfinite(value)) return value;
    return power >= 0 ? value * kExactPowers[power] : value / kExactPowers[-power];
}

/// floor(log10(magnitude)), with the logarithm rounded as exactly as a double can be. C libraries
/// disagree on its last places, and hence on the decade of numbers right below a power of ten;
/// those are compared with the power, by how much the logarithm may round up to it.
std::int64_t DecadeOf(double magnitude) noexcept {
    constexpr double kInDoubt = 1e-12;
    const double logarithm = std::log10(magnitude);
    const double power = std::floor(logarithm + 0.5);
    if (std::fabs(logarithm - power) > kInDoubt) {
        return static_cast<std::int64_t>(std::floor(logarithm));
    }
    const auto decade = static_cast<std::int64_t>(power);
    const double below = std::nextafter(power, -std::numeric_limits<double>::infinity());
    const double least = 1 - std::numbers::ln10 * 0.5 * (power - below);
    return ScaledByPowerOfTen(magnitude, -decade) >= least ? decade : decade - 1;
}

/// The mantissa of `value`, rounded half up to `digits` significant digits, as a signed integer.
double RoundedMantissa(double value, int digits) noexcept {
    if (value == 0 || !std::isfinite(value)) return value;
    const double magnitude = std::fabs(value);
    const double scaled = ScaledByPowerOfTen(magnitude, digits - DecadeOf(magnitude) - 1);
    const double whole = std::floor(scaled);
    return std::copysign(scaled - whole >= 0.5 ? whole + 1 : whole, value);
}

}  // namespace

bool gsl_RealEqualDig(double a, double b, int digits) noexcept {
    if (a == b) return true;
    if (digits > kMaxDigits) return false;
    return RoundedMantissa(a, digits) == RoundedMantissa(b, digits);
}
