#include "g3d/g3d_ColorC.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

// The array forms in g3d_ColorArray.cpp repeat these operations on vectors, in the same order.

namespace {

constexpr float kFull = 65535;

/// NaN passes, so that it meets the one rule in `Channel`.
float AtMostOne(float x) { return x > 1 ? 1 : x; }
/// NaN becomes 0.
float Limited(float x) { return x > 0 ? AtMostOne(x) : 0; }

/// The integer part in 32 bits, the least integer where it does not fit; of it the low 16 bits.
unsigned short Channel(float fraction) {
    const float scaled = fraction * kFull + 0.5f;
    constexpr float kBound = 2147483648.0f;
    const std::int32_t whole = scaled >= -kBound && scaled < kBound
                                   ? static_cast<std::int32_t>(scaled)
                                   : std::numeric_limits<std::int32_t>::min();
    return static_cast<unsigned short>(static_cast<std::uint32_t>(whole) & 0xffffu);
}

unsigned short* Store(unsigned short* rgb, float red, float green, float blue) {
    rgb[0] = Channel(red);
    rgb[1] = Channel(green);
    rgb[2] = Channel(blue);
    return rgb;
}

unsigned short* Complement(unsigned short* out, const unsigned short* in) {
    for (int i = 0; i < 3; ++i) out[i] = static_cast<unsigned short>(65535 - in[i]);
    return out;
}

}  // namespace

unsigned short* HSVToRGB(unsigned short* rgb, const float* hsv) {
    if (hsv[1] == 0) {
        const float grey = AtMostOne(hsv[2]);
        return Store(rgb, grey, grey, grey);
    }
    const float h6 = (hsv[0] >= 1 ? 0 : hsv[0]) * 6;
    if (!(h6 > -1)) return rgb;
    const float s = Limited(hsv[1]);
    const float v = Limited(hsv[2]);
    const int sector = static_cast<int>(h6);
    const float f = h6 - static_cast<float>(sector);
    const float p = AtMostOne((1 - s) * v);
    const float q = AtMostOne((1 - s * f) * v);
    const float t = AtMostOne((1 - s * (1 - f)) * v);
    switch (sector) {
        case 0:
            return Store(rgb, v, t, p);
        case 1:
            return Store(rgb, q, v, p);
        case 2:
            return Store(rgb, p, v, t);
        case 3:
            return Store(rgb, p, q, v);
        case 4:
            return Store(rgb, t, p, v);
        default:
            return Store(rgb, v, p, q);
    }
}

float* RGBToHSV(float* hsv, const unsigned short* rgb) {
    const float r = static_cast<float>(rgb[0]) / kFull;
    const float g = static_cast<float>(rgb[1]) / kFull;
    const float b = static_cast<float>(rgb[2]) / kFull;
    const float greatest = r > g ? r : g;
    const float least = r < g ? r : g;
    const float value = greatest > b ? greatest : b;
    const float d = value - (least < b ? least : b);
    const float saturation = value == 0 ? 0 : d / value;
    float hue = 0;
    if (saturation != 0) {
        const float rc = (value - r) / d;
        const float gc = (value - g) / d;
        const float bc = (value - b) / d;
        hue = r == value ? bc - gc : g == value ? 2 + rc - bc : 4 + gc - rc;
        if (hue < 0) hue += 6;
        hue /= 6;
    }
    hsv[0] = hue;
    hsv[1] = saturation;
    hsv[2] = value;
    return hsv;
}

unsigned short* CMYToRGB(unsigned short* rgb, const unsigned short* cmy) {
    return Complement(rgb, cmy);
}

unsigned short* RGBToCMY(unsigned short* cmy, const unsigned short* rgb) {
    return Complement(cmy, rgb);
}

unsigned short* MixRGB(unsigned short* rgb, const unsigned short* a, float weightA,
                       const unsigned short* b, float weightB) {
    for (int i = 0; i < 3; ++i) {
        const float sum = static_cast<float>(a[i]) * weightA + static_cast<float>(b[i]) * weightB;
        rgb[i] = static_cast<unsigned short>(sum > 0 ? (sum > kFull ? kFull : sum) : 0);
    }
    return rgb;
}

unsigned short* MixHSV(unsigned short* rgb, const unsigned short* a, float weightA,
                       const unsigned short* b, float weightB) {
    float first[3];
    float second[3];
    float mixed[3];
    RGBToHSV(first, a);
    RGBToHSV(second, b);
    for (int i = 0; i < 3; ++i) mixed[i] = first[i] * weightA + second[i] * weightB;
    // The difference is a float too: in double, the hues of yellow and blue are more than half
    // apart.
    const float apart = first[0] - second[0];
    if (std::abs(apart) > 0.5f) {
        mixed[0] += 0.5f;
        if (mixed[0] >= 1) mixed[0] -= 1;
    }
    return HSVToRGB(rgb, mixed);
}

float* PctToHSV(float* hsv, float hue, float saturation, float value) {
    hsv[0] = AtMostOne(hue);
    hsv[1] = AtMostOne(saturation);
    hsv[2] = AtMostOne(value);
    return hsv;
}

unsigned short* PctToRGB(unsigned short* rgb, float red, float green, float blue) {
    return Store(rgb, AtMostOne(red), AtMostOne(green), AtMostOne(blue));
}

float RGBDist(const unsigned short* a, const unsigned short* b) {
    int sum = 0;
    for (int i = 0; i < 3; ++i) sum += std::abs(a[i] - b[i]);
    return static_cast<float>(sum) / kFull;
}
