#include "g3d/g3d_Color.h"

#include <algorithm>
#include <iterator>

#include "g3d/g3d_ColorC.h"

namespace {

/// NaN becomes 0.
float Limited(float x) { return x > 0 ? std::min(x, 1.0f) : 0; }

float MixedAlpha(const g3d_Color& first, float weightFirst, const g3d_Color& second,
                 float weightSecond) {
    return Limited(first.Alpha() * weightFirst + second.Alpha() * weightSecond);
}

}  // namespace

g3d_Color g3d_Color::FromRGB(const unsigned short* rgb, float alpha) noexcept {
    constexpr float kFull = 65535;
    return {static_cast<float>(rgb[0]) / kFull, static_cast<float>(rgb[1]) / kFull,
            static_cast<float>(rgb[2]) / kFull, alpha};
}

g3d_Color g3d_Color::FromHSV(const float* hsv, float alpha) noexcept {
    const float limited[3] = {Limited(hsv[0]), Limited(hsv[1]), Limited(hsv[2])};
    unsigned short rgb[3];
    return FromRGB(HSVToRGB(rgb, limited), alpha);
}

unsigned short* g3d_Color::RGB(unsigned short* rgb) const noexcept {
    return PctToRGB(rgb, Limited(r), Limited(g), Limited(b));
}

float* g3d_Color::HSV(float* hsv) const noexcept {
    unsigned short rgb[3];
    return RGBToHSV(hsv, RGB(rgb));
}

float g3d_Color::Distance(const g3d_Color& other) const noexcept {
    unsigned short first[3];
    unsigned short second[3];
    return RGBDist(RGB(first), other.RGB(second));
}

g3d_Color g3d_Color::Mix(const g3d_Color& first, float weightFirst, const g3d_Color& second,
                         float weightSecond) noexcept {
    unsigned short a[3];
    unsigned short b[3];
    MixRGB(a, first.RGB(a), weightFirst, second.RGB(b), weightSecond);
    return FromRGB(a, MixedAlpha(first, weightFirst, second, weightSecond));
}

g3d_Color g3d_Color::MixInHSV(const g3d_Color& first, float weightFirst, const g3d_Color& second,
                              float weightSecond) noexcept {
    unsigned short a[3];
    unsigned short b[3];
    unsigned short mixed[3] = {0, 0, 0};
    MixHSV(mixed, first.RGB(a), weightFirst, second.RGB(b), weightSecond);
    return FromRGB(mixed, MixedAlpha(first, weightFirst, second, weightSecond));
}

bool g3d_Color::operator==(const g3d_Color& other) const noexcept {
    unsigned short mine[6];
    unsigned short theirs[6];
    RGB(mine);
    other.RGB(theirs);
    PctToRGB(mine + 3, Limited(a), 0, 0);
    PctToRGB(theirs + 3, Limited(other.a), 0, 0);
    return std::equal(std::begin(mine), std::end(mine), theirs);
}
