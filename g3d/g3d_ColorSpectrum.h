#pragma once

#include <vector>

#include "cow/KTSOvuGeomExport.h"
#include "g3d/g3d_Color.h"

/// The colours of a contour plot: maps the values of a range to colours between two ends, smoothly
/// or in bands. By default the range 0 to 1 runs smoothly from blue through cyan, green and yellow
/// to red.
///
/// Between the ends the numbers hue, saturation and value are interpolated, x = (1 - t) x0 + t x1
/// in single precision, the hue then taken modulo 1: ends with hues 0.9 and 1.2 pass through red.
/// (A mixture by `MixHSV` would not do: its wrap puts yellow at the blue end.)
///
/// A value below (above) the range has a colour of its own, at first that of the low (high) end;
/// NaN has the grey "Grey50" of the colour map at first. Copies are independent.
class g3d_ColorSpectrum {
  public:
    KTSOVUGEOM_API g3d_ColorSpectrum();

    /// Lower and upper limit of the range.
    [[nodiscard]] double Low() const noexcept { return levels.front(); }
    [[nodiscard]] double High() const noexcept { return levels.back(); }
    /// Number of bands, 0 when the spectrum is smooth.
    [[nodiscard]] int Bands() const noexcept { return bands; }
    /// The band limits low + (high - low) k / n, k = 0 to n, in ascending order; the last is
    /// exactly the upper limit. A smooth spectrum has the two limits of its range.
    [[nodiscard]] const std::vector<double>& Levels() const noexcept { return levels; }

    /// The band of `value`: the number of inner levels that are not above it, so that a level
    /// belongs to the band above it and the upper limit to the last band. -1 for a smooth spectrum,
    /// NaN, and values outside the range.
    [[nodiscard]] KTSOVUGEOM_API int BandOf(double value) const noexcept;
    /// The colour of band `band`, 0 to `Bands()` - 1: t = band / (n - 1), the middle when there is
    /// one band. Other numbers take the nearest band; a smooth spectrum answers the middle.
    [[nodiscard]] KTSOVUGEOM_API g3d_Color BandColor(int band) const noexcept;
    /// The colour of `value`. In a range of one value that value has the colour of the middle.
    [[nodiscard]] KTSOVUGEOM_API g3d_Color ColorOf(double value) const noexcept;
    /// The colour at `t`, limited to [0, 1] (NaN counts as 0), between the ends.
    [[nodiscard]] KTSOVUGEOM_API g3d_Color Between(float t) const noexcept;

    /// Sets the range; limits that are not finite or low > high are refused with false (a spectrum
    /// that runs downward swaps its ends).
    KTSOVUGEOM_API bool SetRange(double low, double high);
    /// Sets the number of bands; below 1 the spectrum is smooth, above 65536 there are 65536.
    KTSOVUGEOM_API void SetBands(int count);
    /// Sets the ends by hue, saturation and value (any finite hue), or by colours. Refused with
    /// false when a number is not finite. The colours outside the range follow unless they were
    /// set.
    KTSOVUGEOM_API bool SetEnds(const float* lowHSV, const float* highHSV) noexcept;
    KTSOVUGEOM_API bool SetEnds(const g3d_Color& low, const g3d_Color& high) noexcept;
    /// Exchanges the ends.
    KTSOVUGEOM_API void Reverse() noexcept;
    /// Sets the colours of values below and above the range, and of NaN.
    KTSOVUGEOM_API void SetOutside(const g3d_Color& below, const g3d_Color& above) noexcept;
    void SetNoValue(const g3d_Color& color) noexcept { noValue = color; }

  private:
    void SetLevels(double low, double high, int count);

    float lowEnd[3] = {2.0f / 3.0f, 1, 1};
    float highEnd[3] = {0, 1, 1};
    std::vector<double> levels{0, 1};
    int bands = 0;
    bool hasOutside = false;
    g3d_Color belowRange;
    g3d_Color aboveRange;
    g3d_Color noValue;
};
