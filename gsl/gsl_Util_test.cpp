#include "gsl/gsl_Util.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

#include "gsl/gsl_Real.h"

/// Reaches the fields that have no accessor.
struct gsl_UtilTestAccess {
    static const double (&DisplayFactors(const gsl_Util& util))[5] { return util.displayFactors; }
    static gsl_Util* MakeIn(void* storage) { return new (storage) gsl_Util; }
    static const void* Unset(const gsl_Util& util) { return &util.unset; }
};

namespace {

using testing::ElementsAre;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(gsl_Util, SwitchesTheThirdDisplayFactorAlone) {
    gsl_Util& util = gsl_Util::Instance();
    const auto& factors = gsl_UtilTestAccess::DisplayFactors(util);
    EXPECT_THAT(factors, ElementsAre(45.0, 22.5, 11.25, 5.625, 2.8125));
    util.SetOldDisplayFactor(true);
    EXPECT_THAT(factors, ElementsAre(45.0, 22.5, 15.0, 5.625, 2.8125));
    util.SetOldDisplayFactor(false);
    EXPECT_THAT(factors, ElementsAre(45.0, 22.5, 11.25, 5.625, 2.8125));
}

TEST(gsl_Util_Kept, ConstructionLeavesTheFifthFieldAsTheStorageWas) {
    alignas(gsl_Util) std::byte storage[sizeof(gsl_Util)];
    std::memset(storage, 0x5A, sizeof storage);
    const gsl_Util* const util = gsl_UtilTestAccess::MakeIn(storage);
    std::byte expected[sizeof(double)];
    std::memset(expected, 0x5A, sizeof expected);
    EXPECT_EQ(std::memcmp(gsl_UtilTestAccess::Unset(*util), expected, sizeof expected), 0);
    EXPECT_EQ(util->AngTol(), 1e-10);
}

TEST(gsl_Real, ComparesSignificantDigits) {
    const struct {
        double a, b;
        int digits;
        bool equal;
    } cases[] = {
        {1.2344, 1.2349, 4, false},
        {1.2345, 1.2349, 4, true},
        {1.23449, 1.2344, 4, true},
        {-1.2345, -1.2349, 3, true},
        {-1.2345, 1.2345, 3, false},
        {2.4e-300, 2.6e-300, 1, false},
        {2.6e-300, 2.7e-300, 1, true},
        {1.7e308, 1.71e308, 2, true},
        {0, 1e-300, 3, false},
        {3, 3, 99, true},
        {3, 3.0000000000000004, 16, false},
        {3, 3.0000000000000004, 15, true},
        {1e22, 1.0000001e22, 7, true},
        {999.9999999999999, 1000, 15, true},  // the logarithm rounds to 3
        {0.9999999999999999, 1, 15, false},
        {0.00000099999999999999889, 1e-6, 1, false},  // and here not to -6
        {kInfinity, 1, 3, false},
        {kInfinity, -kInfinity, 3, false},
        {NAN, NAN, 3, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(gsl_RealEqualDig(c.a, c.b, c.digits), c.equal)
            << c.a << ' ' << c.b << ' ' << c.digits;
        EXPECT_EQ(gsl_RealEqualDig(c.b, c.a, c.digits), c.equal);
    }
}

TEST(gsl_Real_Kept, ComparesMantissasWithoutTheirExponents) {
    EXPECT_TRUE(gsl_RealEqualDig(1, 10, 3));
    EXPECT_TRUE(gsl_RealEqualDig(1, 1000, 6));
    EXPECT_FALSE(gsl_RealEqualDig(9.9996, 10, 4));
}

}  // namespace
