#include "g3d/g3d_ColorSpectrum.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "g3d/g3d_ColorC.h"
#include "g3d/g3d_ColorMap.h"

namespace {

constexpr int kGreatestBandCount = 65536;
constexpr float kMiddle = 0.5f;

bool IsFinite(const float* hsv) {
    return std::isfinite(hsv[0]) && std::isfinite(hsv[1]) && std::isfinite(hsv[2]);
}

/// Where `value` lies in a range of different limits, 0 to 1; from halves, since the difference of
/// the limits may overflow.
float Position(double value, double low, double high) {
    const double range = high - low;
    return static_cast<float>(std::isfinite(range) ? (value - low) / range
                                                   : (value / 2 - low / 2) / (high / 2 - low / 2));
}

}  // namespace

g3d_ColorSpectrum::g3d_ColorSpectrum() : noValue(g3d_ColorMap::Instance().Lookup("Grey50")) {}

int g3d_ColorSpectrum::BandOf(double value) const noexcept {
    if (bands == 0 || !(value >= Low() && value <= High())) return -1;
    const auto firstInner = levels.begin() + 1;
    return static_cast<int>(std::upper_bound(firstInner, levels.end() - 1, value) - firstInner);
}

g3d_Color g3d_ColorSpectrum::BandColor(int band) const noexcept {
    if (bands < 2) return Between(kMiddle);
    return Between(static_cast<float>(static_cast<double>(band) / (bands - 1)));
}

g3d_Color g3d_ColorSpectrum::ColorOf(double value) const noexcept {
    if (std::isnan(value)) return noValue;
    if (value < Low()) return hasOutside ? belowRange : Between(0);
    if (value > High()) return hasOutside ? aboveRange : Between(1);
    if (Low() == High()) return Between(kMiddle);
    if (bands > 0) return BandColor(BandOf(value));
    return Between(Position(value, Low(), High()));
}

g3d_Color g3d_ColorSpectrum::Between(float t) const noexcept {
    const float at = t > 0 ? std::min(t, 1.0f) : 0;
    float hsv[3];
    for (int i = 0; i < 3; ++i) hsv[i] = (1 - at) * lowEnd[i] + at * highEnd[i];
    hsv[0] -= std::floor(hsv[0]);
    return g3d_Color::FromHSV(hsv);
}

bool g3d_ColorSpectrum::SetRange(double low, double high) {
    if (!std::isfinite(low) || !std::isfinite(high) || low > high) return false;
    SetLevels(low, high, bands);
    return true;
}

void g3d_ColorSpectrum::SetBands(int count) {
    const int limited = std::clamp(count, 0, kGreatestBandCount);
    SetLevels(Low(), High(), limited);
    bands = limited;
}

bool g3d_ColorSpectrum::SetEnds(const float* lowHSV, const float* highHSV) noexcept {
    if (!IsFinite(lowHSV) || !IsFinite(highHSV)) return false;
    std::copy_n(lowHSV, 3, lowEnd);
    std::copy_n(highHSV, 3, highEnd);
    return true;
}

bool g3d_ColorSpectrum::SetEnds(const g3d_Color& low, const g3d_Color& high) noexcept {
    float lowHSV[3];
    float highHSV[3];
    return SetEnds(low.HSV(lowHSV), high.HSV(highHSV));
}

void g3d_ColorSpectrum::Reverse() noexcept { std::swap(lowEnd, highEnd); }

void g3d_ColorSpectrum::SetOutside(const g3d_Color& below, const g3d_Color& above) noexcept {
    belowRange = below;
    aboveRange = above;
    hasOutside = true;
}

void g3d_ColorSpectrum::SetLevels(double low, double high, int count) {
    const int parts = std::max(count, 1);
    // Near the largest doubles the formula would overflow; scaled by a power of 2 it is exact.
    const double scale = std::isfinite((high - low) * parts) ? 1 : 0x1p-64;
    const double range = high * scale - low * scale;
    std::vector<double> fresh(static_cast<std::size_t>(parts) + 1, high);
    for (int k = 0; k < parts; ++k) {
        const double level = (low * scale + range * k / parts) / scale;
        fresh[static_cast<std::size_t>(k)] = std::min(level, high);
    }
    levels = std::move(fresh);
}
