#include "omu/omu_RangeChecker.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <string>

#include "omu/omu_RangeErrorException.h"

namespace {

/// The message that `check` raises, "" for none.
template <class Check>
std::string MessageOf(Check check) {
    try {
        check();
        return "";
    } catch (const omu_RangeErrorException& caught) {
        EXPECT_NE(std::strstr(caught.File(), "omu_RangeChecker"), nullptr);
        EXPECT_STREQ(caught.PythonType(), "RangeError");
        return caught.what();
    }
}

template <class Number>
std::string InRange(Number lower, bool lowerIncluded, Number value, Number upper,
                    bool upperIncluded) {
    return MessageOf([&] {
        omu_RangeChecker::CheckInRange("n", lower, lowerIncluded, value, upper, upperIncluded);
    });
}
template <class Number>
std::string Greater(Number lower, bool included, Number value) {
    return MessageOf([&] { omu_RangeChecker::CheckGreaterThan("n", lower, included, value); });
}
template <class Number>
std::string Less(Number upper, bool included, Number value) {
    return MessageOf([&] { omu_RangeChecker::CheckLessThan("n", upper, included, value); });
}

TEST(omu_RangeChecker, IncludesLimitsAsTold) {
    const std::string both = "n must be in the range: ";
    EXPECT_EQ(InRange(0, true, 0, 10, false), "");
    EXPECT_EQ(InRange(0, true, 9, 10, false), "");
    EXPECT_EQ(InRange(0, true, 10, 10, false), both + "0 <= n < 10");
    EXPECT_EQ(InRange(0, false, 0, 10, true), both + "0 < n <= 10");
    EXPECT_EQ(InRange(0.0, true, 1.5, 1.0, true), both + "0.0 <= n <= 1.0");
    EXPECT_EQ(InRange(0.0, true, std::nan(""), 1.0, true), both + "0.0 <= n <= 1.0");
    EXPECT_EQ(InRange(-1e300, false, -HUGE_VAL, 1e-7, false), both + "-1e+300 < n < 1e-07");
    EXPECT_EQ(Greater(0, false, 1), "");
    EXPECT_EQ(Greater(0, false, 0), "n must be > 0");
    EXPECT_EQ(Greater(0.5, true, 0.25), "n must be >= 0.5");
    EXPECT_EQ(Less(5, true, 5), "");
    EXPECT_EQ(Less(5, true, 6), "n must be <= 5");
    EXPECT_EQ(Less(5, false, 5), "n must be < 5");
}

TEST(omu_RangeChecker, ExcludedExtremesAreNoLimit) {
    EXPECT_EQ(InRange(INT_MIN, false, INT_MIN, INT_MAX, false), "n must be < 2147483647");
    EXPECT_EQ(InRange(INT_MIN, true, 8, 5, false), "n must be in the range: -2147483648 <= n < 5");
    EXPECT_EQ(InRange(1, true, 0, INT_MAX, true), "n must be in the range: 1 <= n <= 2147483647");
}

TEST(omu_RangeChecker_Kept, OneSidedChecksRefuseTheExtremeOfTheOtherSide) {
    EXPECT_EQ(Greater(0, true, INT_MAX), "n must be >= 0");
    EXPECT_EQ(Greater(0.0, false, 3e9), "n must be > 0.0");
    EXPECT_EQ(Less(5, true, INT_MIN), "n must be <= 5");
    EXPECT_EQ(Less(0.0, true, -3e9), "n must be <= 0.0");
}

}  // namespace
