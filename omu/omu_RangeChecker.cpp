#include "omu/omu_RangeChecker.h"

#include <limits>

#include "omu/omu_PrimNumber.h"
#include "omu/omu_RangeErrorException.h"

namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

cow_String TextOf(int limit) { return atr("%d", limit); }
cow_String TextOf(double limit) { return omu_PrimNumber::FloatText(limit); }

/// The limit as the message shows it; the `extreme` is none.
template <class Number>
omu_RangeErrorException::Limit LimitOf(Number limit, bool included, int extreme) {
    return {TextOf(limit), included                                ? omu_LIMIT_INCLUDED
                           : limit == static_cast<Number>(extreme) ? omu_NO_LIMIT
                                                                   : omu_LIMIT_EXCLUDED};
}

// Passing asks for both comparisons to be true, which NaN never is.
template <class Number>
void Check(const cow_String& name, Number lower, bool lowerIncluded, Number value, Number upper,
           bool upperIncluded) {
    const bool passes = (lowerIncluded ? value >= lower : value > lower) &&
                        (upperIncluded ? value <= upper : value < upper);
    if (passes) return;
    KTSBasThrow(omu_RangeErrorException(name, omu_RangeErrorException::kUnspecified,
                                        LimitOf(lower, lowerIncluded, kLowest),
                                        LimitOf(upper, upperIncluded, kHighest)));
}

}  // namespace

void omu_RangeChecker::CheckInRange(const cow_String& name, int lower, bool lowerIncluded,
                                    int value, int upper, bool upperIncluded) {
    Check(name, lower, lowerIncluded, value, upper, upperIncluded);
}

void omu_RangeChecker::CheckInRange(const cow_String& name, double lower, bool lowerIncluded,
                                    double value, double upper, bool upperIncluded) {
    Check(name, lower, lowerIncluded, value, upper, upperIncluded);
}

void omu_RangeChecker::CheckGreaterThan(const cow_String& name, int lower, bool lowerIncluded,
                                        int value) {
    Check(name, lower, lowerIncluded, value, kHighest, false);
}

void omu_RangeChecker::CheckGreaterThan(const cow_String& name, double lower, bool lowerIncluded,
                                        double value) {
    Check(name, lower, lowerIncluded, value, static_cast<double>(kHighest), false);
}

void omu_RangeChecker::CheckLessThan(const cow_String& name, int upper, bool upperIncluded,
                                     int value) {
    Check(name, kLowest, false, value, upper, upperIncluded);
}

void omu_RangeChecker::CheckLessThan(const cow_String& name, double upper, bool upperIncluded,
                                     double value) {
    Check(name, static_cast<double>(kLowest), false, value, upper, upperIncluded);
}
