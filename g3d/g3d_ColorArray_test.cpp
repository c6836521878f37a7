#include "g3d/g3d_ColorArray.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "g3d/g3d_ColorC.h"
#include "testing/test_Environment.h"
#include "testing/test_Random.h"

namespace {

/// Every number that a branch of the conversions looks for, among random ones.
float Component(test_Random& random) {
    static const float special[] = {0,      -0.0f,    1,         2,      -1,    1.0f / 6, -1.0f / 6,
                                    1e-38f, INFINITY, -INFINITY, -1e30f, 1e30f, NAN,      5.0f / 6};
    if (random.Below(8) == 0) return special[random.Below(14)];
    return static_cast<float>(random.Between(-0.12, 1.1));
}

}  // namespace

TEST(g3d_ColorArray, ConvertsAsThePlainFunctionsBitForBit) {
    test_Random random(17);
    constexpr std::size_t count = 20011;
    std::vector<float> hsv(3 * count);
    std::vector<unsigned short> rgb(3 * count);
    for (float& x : hsv) x = Component(random);
    for (unsigned short& x : rgb) x = static_cast<unsigned short>(random.Below(65536));
    // In the first half every hue has a result, so that no block is converted triple by triple.
    for (std::size_t i = 0; i < 3 * count / 2; i += 3)
        if (!(hsv[i] > -0.16f)) hsv[i] = -0.1f;

    std::vector<unsigned short> expectedRGB = rgb;
    std::vector<float> expectedHSV(3 * count);
    for (std::size_t i = 0; i < 3 * count; i += 3) {
        HSVToRGB(expectedRGB.data() + i, hsv.data() + i);
        RGBToHSV(expectedHSV.data() + i, rgb.data() + i);
    }
    for (const char* level : {"NONE", "AVX2"}) {
        const test_SseLevel forced(level);
        std::vector<unsigned short> toRGB = rgb;
        EXPECT_EQ(g3d_ColorArray::HSVToRGB(toRGB.data(), hsv.data(), count), toRGB.data());
        EXPECT_EQ(toRGB, expectedRGB) << level;
        std::vector<float> toHSV(3 * count);
        g3d_ColorArray::RGBToHSV(toHSV.data(), rgb.data(), count);
        for (std::size_t i = 0; i < 3 * count; ++i)
            ASSERT_EQ(std::bit_cast<std::uint32_t>(toHSV[i]),
                      std::bit_cast<std::uint32_t>(expectedHSV[i]))
                << level << ' ' << i;
    }
}

TEST(g3d_ColorArray, WritesTriplesUpToItsEnd) {
    g3d_ColorArray colors;
    colors.Append(g3d_Color(1, 0, 0));
    colors.Append(g3d_Color(0, 1, 1));
    std::vector<unsigned short> rgb(9, 7);
    colors.RGB(rgb.data(), 3);
    EXPECT_EQ(rgb, (std::vector<unsigned short>{65535, 0, 0, 0, 65535, 65535, 7, 7, 7}));
    colors.RGB(rgb.data() + 6, 1);
    EXPECT_EQ(rgb[6], 65535);
    EXPECT_DEATH(static_cast<void>(colors.ConstGet(2)), "");
}
