#pragma once

#include "cow/KTSOvuGeomExport.h"

/// A colour as four single-precision fractions red, green, blue and alpha, kept as given; black and
/// opaque by default. A plain value.
///
/// Conversions limit the fractions to [0, 1] (NaN counts as 0) and go through the plain functions
/// of `g3d_ColorC.h`, in 16-bit channels; alpha takes no part in them.
class g3d_Color {
  public:
    constexpr g3d_Color() noexcept = default;
    constexpr g3d_Color(float red, float green, float blue, float alpha = 1) noexcept
        : r(red), g(green), b(blue), a(alpha) {}
    /// The colour of three 16-bit channels, each divided by 65535; `RGB` gives them back exactly.
    [[nodiscard]] KTSOVUGEOM_API static g3d_Color FromRGB(const unsigned short* rgb,
                                                          float alpha = 1) noexcept;
    /// The colour of hue, saturation and value, each limited to [0, 1].
    [[nodiscard]] KTSOVUGEOM_API static g3d_Color FromHSV(const float* hsv,
                                                          float alpha = 1) noexcept;

    [[nodiscard]] constexpr float Red() const noexcept { return r; }
    [[nodiscard]] constexpr float Green() const noexcept { return g; }
    [[nodiscard]] constexpr float Blue() const noexcept { return b; }
    [[nodiscard]] constexpr float Alpha() const noexcept { return a; }
    /// Writes the three channels to `rgb` and returns it.
    KTSOVUGEOM_API unsigned short* RGB(unsigned short* rgb) const noexcept;
    /// Writes hue, saturation and value of the channels to `hsv` and returns it.
    KTSOVUGEOM_API float* HSV(float* hsv) const noexcept;
    /// `RGBDist` of the channels, 0 to 3.
    [[nodiscard]] KTSOVUGEOM_API float Distance(const g3d_Color& other) const noexcept;

    /// Mixes two colours by their weights with `MixRGB` or `MixHSV`; alpha becomes the weighted sum
    /// of both, limited to [0, 1]. Weights for which `MixHSV` has no result give black.
    [[nodiscard]] KTSOVUGEOM_API static g3d_Color Mix(const g3d_Color& first, float weightFirst,
                                                      const g3d_Color& second,
                                                      float weightSecond) noexcept;
    [[nodiscard]] KTSOVUGEOM_API static g3d_Color MixInHSV(const g3d_Color& first,
                                                           float weightFirst,
                                                           const g3d_Color& second,
                                                           float weightSecond) noexcept;

    /// Equality of the channels, alpha scaled like the others.
    [[nodiscard]] KTSOVUGEOM_API bool operator==(const g3d_Color& other) const noexcept;

  private:
    float r = 0;
    float g = 0;
    float b = 0;
    float a = 1;
};
