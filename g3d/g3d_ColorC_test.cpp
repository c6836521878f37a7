#include "g3d/g3d_ColorC.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "testing/test_Random.h"

using testing::ElementsAre;

extern "C" int g3d_ColorC_CallAllFromC(void);

namespace {

using Channels = std::array<unsigned short, 3>;
using Fractions = std::array<float, 3>;

constexpr Channels kBefore{11, 22, 33};
constexpr Channels kRed{65535, 0, 0};
constexpr Channels kYellow{65535, 65535, 0};
constexpr Channels kBlue{0, 0, 65535};
constexpr Channels kCyan{0, 65535, 65535};
constexpr Channels kBlack{0, 0, 0};
constexpr Channels kWhite{65535, 65535, 65535};
constexpr float kInfinity = std::numeric_limits<float>::infinity();

Channels FromHSV(const Fractions& hsv) {
    Channels rgb = kBefore;
    EXPECT_EQ(HSVToRGB(rgb.data(), hsv.data()), rgb.data());
    return rgb;
}

Fractions ToHSV(const Channels& rgb) {
    Fractions hsv;
    RGBToHSV(hsv.data(), rgb.data());
    return hsv;
}

Channels FromPct(const Fractions& pct) {
    Channels rgb;
    PctToRGB(rgb.data(), pct[0], pct[1], pct[2]);
    return rgb;
}

Channels Mixed(const Channels& a, float wa, const Channels& b, float wb) {
    Channels rgb = kBefore;
    MixRGB(rgb.data(), a.data(), wa, b.data(), wb);
    return rgb;
}

Channels MixedHSV(const Channels& a, float wa, const Channels& b, float wb) {
    Channels rgb = kBefore;
    MixHSV(rgb.data(), a.data(), wa, b.data(), wb);
    // The result may overwrite either input.
    Channels overA = a;
    MixHSV(overA.data(), overA.data(), wa, b.data(), wb);
    Channels overB = b;
    MixHSV(overB.data(), a.data(), wa, overB.data(), wb);
    if (rgb != kBefore) {
        EXPECT_EQ(overA, rgb);
        EXPECT_EQ(overB, rgb);
    }
    return rgb;
}

}  // namespace

TEST(g3d_ColorC, IsCallableFromC) { EXPECT_EQ(g3d_ColorC_CallAllFromC(), 0); }

TEST(g3d_ColorC, HSVToRGBBySectorsAndLimits) {
    const struct {
        Fractions hsv;
        Channels rgb;
    } cases[] = {
        {{0.3f, 0, 0.5f}, {32768, 32768, 32768}},
        {{-7, -0.0f, 2}, kWhite},
        {{1, 1, 1}, kRed},
        {{kInfinity, 1, 1}, kRed},
        {{0, 2, 3}, kRed},
        {{0, NAN, 1}, kWhite},
        {{0, 1, NAN}, kBlack},
        {{0.1f, -1, 0.5f}, {32768, 32768, 32768}},
        {{1.0f / 6, 1, 1}, kYellow},
        {{0.25f, 1, 1}, {32768, 65535, 0}},
        {{0.5f, 1, 1}, kCyan},
        {{0.75f, 0.5f, 1}, {49151, 32768, 65535}},
        {{std::nextafter(1.0f, 0.0f), 1, 1}, {65535, 0, 0}},
    };
    for (const auto& c : cases) EXPECT_EQ(FromHSV(c.hsv), c.rgb) << c.hsv[0] << ' ' << c.hsv[1];
}

TEST(g3d_ColorC, RGBToHSVAndBackIsExact) {
    EXPECT_THAT(ToHSV(kYellow), ElementsAre(1.0f / 6, 1, 1));
    EXPECT_THAT(ToHSV(kBlack), ElementsAre(0, 0, 0));
    EXPECT_THAT(ToHSV({100, 100, 100}), ElementsAre(0, 0, 100.0f / 65535));
    // A tie for the greatest channel goes to red: the hue comes out as 5/6, not through blue.
    EXPECT_THAT(ToHSV({65535, 0, 65535}), ElementsAre(5.0f / 6, 1, 1));
    const auto expectIdentity = [](const Channels& rgb) {
        const Fractions hsv = ToHSV(rgb);
        ASSERT_TRUE(hsv[0] >= 0 && hsv[0] < 1);
        ASSERT_EQ(FromHSV(hsv), rgb) << rgb[0] << ' ' << rgb[1] << ' ' << rgb[2];
    };
    expectIdentity({0, 0, 1});
    expectIdentity({65535, 0, 1});
    test_Random random(3);
    // Anything, with many a channel at an end of its range; greys whose channels hardly differ.
    const auto any = [&random] {
        const int channel = random.Below(3) == 0 ? 65535 * random.Below(2) : random.Below(65536);
        return static_cast<unsigned short>(channel);
    };
    for (int i = 0; i < 50000; ++i) {
        const int grey = random.Below(65530);
        const auto near = [&] { return static_cast<unsigned short>(grey + random.Below(6)); };
        expectIdentity({near(), near(), near()});
        expectIdentity({any(), any(), any()});
    }
}

TEST(g3d_ColorC, PctToRGBRoundsInSinglePrecision) {
    // In double the first two would be 45874 and 58981.
    EXPECT_THAT(FromPct({0.7f, 0.9f, 0.1f}), ElementsAre(45875, 58982, 6554));
    EXPECT_THAT(FromPct({1.5f, kInfinity, 0}), ElementsAre(65535, 65535, 0));
}

TEST(g3d_ColorC, MixesAndDistances) {
    EXPECT_THAT(Mixed({65535, 0, 7}, 1e30f, kBlack, 1), ElementsAre(65535, 0, 65535));
    EXPECT_EQ(Mixed(kWhite, -1e30f, kWhite, 1), kBlack);
    EXPECT_EQ(Mixed(kWhite, NAN, kWhite, 1), kBlack);
    // Hues a half apart in floats; their difference in double would wrap to the opposite hue.
    EXPECT_EQ(MixedHSV(kYellow, 0.5f, kBlue, 0.5f), Channels({0, 65535, 32768}));
    Fractions hue9{0.9f, 1, 1};
    EXPECT_NEAR(ToHSV(MixedHSV(kRed, 0.5f, FromHSV(hue9), 0.5f))[0], 0.95f, 1e-5f);

    EXPECT_EQ(RGBDist(kBlack.data(), kWhite.data()), 3);
    EXPECT_EQ(RGBDist(kRed.data(), kYellow.data()), 1);
    EXPECT_FLOAT_EQ(RGBDist(kBlack.data(), kBefore.data()), 66.0f / 65535);
}

TEST(g3d_ColorC_Kept, NegativeFractionsWrapIntoTheChannel) {
    EXPECT_THAT(FromPct({-0.5f, -2.0f / 65535, -1.0f / 65535}), ElementsAre(32769, 65535, 0));
    EXPECT_THAT(FromPct({NAN, -kInfinity, -1e10f}), ElementsAre(0, 0, 0));
    EXPECT_EQ(FromHSV({0, 0, -0.5f})[1], 32769);
    EXPECT_EQ(FromHSV({0, 0, NAN}), kBlack);
}

TEST(g3d_ColorC_Kept, HuesBelowTheFirstSectorLeaveTheOutput) {
    const float sixth = -1.0f / 6;
    for (const float hue : {sixth, -0.2f, NAN, -kInfinity, -1e30f}) {
        EXPECT_EQ(FromHSV({hue, 1, 1}), kBefore) << hue;
        EXPECT_EQ(FromHSV({hue, -1, 1}), kBefore) << hue;
    }
    EXPECT_THAT(FromHSV({-0.1f, 1, 1}), ElementsAre(65535, 26216, 0));
    EXPECT_THAT(FromHSV({std::nextafter(sixth, 0.0f), 1, 1}), ElementsAre(65535, 2, 0));
}

TEST(g3d_ColorC_Kept, MixRGBTruncates) {
    EXPECT_EQ(Mixed({1, 0, 0}, 0.5f, {2, 0, 0}, 0.5f)[0], 1);
    EXPECT_EQ(Mixed(kWhite, 0.04f, kWhite, 0.96f)[0], 65534);
}

TEST(g3d_ColorC_Kept, MixHSVWrapsTheWeightedHue) {
    EXPECT_EQ(MixedHSV(kBlue, 1, kRed, 0), kYellow);
    EXPECT_EQ(MixedHSV(kRed, 1, kBlue, 0), kCyan);
    EXPECT_EQ(MixedHSV(kCyan, -1, kRed, 0.5f), kBefore);
}
