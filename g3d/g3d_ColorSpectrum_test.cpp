#include "g3d/g3d_ColorSpectrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "g3d/g3d_ColorMap.h"
#include "testing/test_Random.h"

namespace {

class g3d_ColorSpectrumTest : public testing::Test {
  protected:
    void TearDown() override { omi_SingletonBase<g3d_ColorMap>::Finalize(); }
    g3d_ColorSpectrum spectrum;
};

const g3d_Color kBlue(0, 0, 1);
const g3d_Color kCyan(0, 1, 1);
const g3d_Color kGreen(0, 1, 0);
const g3d_Color kYellow(1, 1, 0);
const g3d_Color kRed(1, 0, 0);
const g3d_Color kGrey(0.5f, 0.5f, 0.5f);

}  // namespace

TEST_F(g3d_ColorSpectrumTest, RunsFromBlueToRed) {
    ASSERT_TRUE(spectrum.SetRange(-10, 30));
    const struct {
        double value;
        g3d_Color color;
    } cases[] = {{-10, kBlue}, {0, kCyan},         {10, kGreen},     {20, kYellow}, {30, kRed},
                 {-11, kBlue}, {-INFINITY, kBlue}, {INFINITY, kRed}, {NAN, kGrey}};
    for (const auto& c : cases) EXPECT_EQ(spectrum.ColorOf(c.value), c.color) << c.value;
    spectrum.SetOutside({0, 0, 0}, {1, 1, 1});
    EXPECT_EQ(spectrum.ColorOf(-11), g3d_Color(0, 0, 0));
    EXPECT_EQ(spectrum.ColorOf(31), g3d_Color(1, 1, 1));
    spectrum.Reverse();
    EXPECT_EQ(spectrum.ColorOf(0), kYellow);
    EXPECT_TRUE(spectrum.SetEnds(kGreen, kBlue));
    EXPECT_EQ(spectrum.ColorOf(10), kCyan);
    // From magenta through red to yellow, over the seam of the hue circle.
    const float magenta[3] = {5.0f / 6, 1, 1};
    const float yellow[3] = {7.0f / 6, 1, 1};
    EXPECT_TRUE(spectrum.SetEnds(magenta, yellow));
    EXPECT_EQ(spectrum.ColorOf(-10), g3d_Color(1, 0, 1));
    EXPECT_EQ(spectrum.ColorOf(10), kRed);
    const float bad[3] = {NAN, 1, 1};
    EXPECT_FALSE(spectrum.SetEnds(bad, yellow));
    EXPECT_EQ(spectrum.ColorOf(10), kRed);
}

TEST_F(g3d_ColorSpectrumTest, TakesAnyFiniteRange) {
    constexpr double greatest = std::numeric_limits<double>::max();
    ASSERT_TRUE(spectrum.SetRange(-1e308, 1e308));
    EXPECT_EQ(spectrum.ColorOf(-0.5e308), kCyan);
    EXPECT_EQ(spectrum.ColorOf(0), kGreen);
    ASSERT_TRUE(spectrum.SetRange(5, 5));
    EXPECT_EQ(spectrum.ColorOf(5), kGreen);
    EXPECT_EQ(spectrum.ColorOf(4), kBlue);
    EXPECT_FALSE(spectrum.SetRange(2, 1));
    EXPECT_FALSE(spectrum.SetRange(NAN, 1));
    EXPECT_FALSE(spectrum.SetRange(0, INFINITY));
    EXPECT_EQ(spectrum.Low(), 5);
    spectrum.SetBands(4);
    ASSERT_TRUE(spectrum.SetRange(-greatest, greatest));
    ASSERT_EQ(spectrum.Levels().size(), 5u);
    for (int k = 0; k <= 4; ++k)
        EXPECT_DOUBLE_EQ(spectrum.Levels()[static_cast<std::size_t>(k)], (k - 2) * (greatest / 2));
}

TEST_F(g3d_ColorSpectrumTest, EveryLevelBelongsToTheBandAboveIt) {
    test_Random random(9);
    for (int round = 0; round < 300; ++round) {
        const double low = round == 0 ? 0 : random.Between(-5, 5);
        const double high = round == 0 ? 0.7 : low + random.Between(0.001, 10);
        const int n = round == 0 ? 7 : 1 + random.Below(40);
        spectrum.SetBands(n);
        ASSERT_TRUE(spectrum.SetRange(low, high));
        ASSERT_EQ(spectrum.Levels().size(), static_cast<std::size_t>(n) + 1);
        for (int k = 0; k <= n; ++k) {
            const double level = spectrum.Levels()[static_cast<std::size_t>(k)];
            ASSERT_EQ(spectrum.BandOf(level), std::min(k, n - 1)) << low << ' ' << high << ' ' << n;
            ASSERT_EQ(spectrum.ColorOf(level), spectrum.BandColor(std::min(k, n - 1)));
            if (k > 0) {
                ASSERT_EQ(spectrum.BandOf(std::nextafter(level, low)), k - 1);
            }
        }
    }
}

TEST_F(g3d_ColorSpectrumTest, BandsSpanBothEnds) {
    spectrum.SetBands(5);
    EXPECT_EQ(spectrum.BandColor(0), kBlue);
    EXPECT_EQ(spectrum.BandColor(1), kCyan);
    EXPECT_EQ(spectrum.BandColor(4), kRed);
    EXPECT_EQ(spectrum.BandColor(99), kRed);
    EXPECT_EQ(spectrum.ColorOf(0.99), kRed);
    spectrum.SetBands(1);
    EXPECT_EQ(spectrum.ColorOf(0.1), kGreen);
    spectrum.SetBands(-3);
    EXPECT_EQ(spectrum.Bands(), 0);
    EXPECT_EQ(spectrum.BandOf(0.5), -1);
    EXPECT_EQ(spectrum.ColorOf(0.25), kCyan);
    spectrum.SetBands(1 << 30);
    EXPECT_EQ(spectrum.Bands(), 65536);
}
