#include "g3d/g3d_Color.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(g3d_Color, KeepsFractionsAndGivesEveryChannelBack) {
    EXPECT_EQ(g3d_Color(0.63f, 0.13f, 0.94f).Red(), 0.63f);
    for (int channel = 0; channel <= 65535; ++channel) {
        const auto c = static_cast<unsigned short>(channel);
        const unsigned short rgb[3] = {c, static_cast<unsigned short>(65535 - c), 0};
        unsigned short back[3];
        g3d_Color::FromRGB(rgb).RGB(back);
        ASSERT_TRUE(back[0] == rgb[0] && back[1] == rgb[1] && back[2] == 0) << channel;
    }
}

TEST(g3d_Color, LimitsFractionsBeforeItConverts) {
    unsigned short rgb[3];
    g3d_Color(-0.5f, 2, NAN).RGB(rgb);
    EXPECT_TRUE(rgb[0] == 0 && rgb[1] == 65535 && rgb[2] == 0);
    const float hsv[3] = {-0.5f, 2, 0.5f};
    EXPECT_EQ(g3d_Color::FromHSV(hsv), g3d_Color(0.5f, 0, 0));
    EXPECT_EQ(g3d_Color(1, 0, 0), g3d_Color(1 - 1e-6f, 0, 0));
    EXPECT_NE(g3d_Color(1, 0, 0), g3d_Color(1, 0, 0, 0.5f));
}

TEST(g3d_Color, MixesColorsAndAlpha) {
    const g3d_Color red(1, 0, 0, 1);
    const g3d_Color blue(0, 0, 1, 0.5f);
    const g3d_Color mixed = g3d_Color::Mix(red, 0.5f, blue, 0.5f);
    EXPECT_EQ(mixed.Alpha(), 0.75f);
    EXPECT_FLOAT_EQ(mixed.Blue(), 32767.0f / 65535);
    EXPECT_EQ(g3d_Color::MixInHSV(red, 0.5f, g3d_Color(1, 1, 0), 3).Alpha(), 1);
    EXPECT_EQ(g3d_Color::MixInHSV(red, 0.5f, blue, 0.5f), g3d_Color(1, 0, 1, 0.75f));
    EXPECT_EQ(g3d_Color::MixInHSV(g3d_Color(0, 1, 1), -1, red, 0), g3d_Color(0, 0, 0, 0));
    EXPECT_EQ(red.Distance(blue), 2);
}
