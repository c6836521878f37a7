#pragma once

/// Colour conversions as plain functions, for C and C++ alike.
///
/// An RGB (or CMY) colour is three unsigned 16-bit channels, 0 none and 65535 full; an HSV colour
/// is three floats hue, saturation, value in [0, 1], hue 0 and 1 being the same red. Every function
/// writes its result into the array passed first and returns that array; inputs are read before the
/// first write, so an input array may be the output. Arithmetic is in single precision, each
/// operation rounded on its own. Null pointers are not guarded against. No function fails, and all
/// may be called from any thread.
///
/// Fractions become channels as x * 65535 + 0.5, truncated.
///
/// Kept: where a fraction has no lower limit (`PctToRGB`, and `HSVToRGB` for a grey or a hue below
/// 0) a negative result is truncated to a 32-bit integer of which the channel takes the low 16
/// bits: `PctToRGB` of -0.5 is 32769, of -2/65535 it is 65535 and of -1/65535 it is 0; NaN and
/// values beyond 32 bits give 0. One would expect 0 throughout; stored pictures were coloured this
/// way. `g3d_Color` limits fractions to [0, 1] first.

#include "cow/KTSOvuGeomExport.h"

#ifdef __cplusplus
extern "C" {
#endif

/// HSV to RGB by the six sectors of the hue circle. Saturation exactly 0 is a grey of value (at
/// most 1), whatever the hue. Otherwise saturation and value are limited to [0, 1] (NaN counts as
/// 0) and a hue of 1 or more is 0.
///
/// Kept: a hue of -1/6 or less, or NaN, with a saturation other than 0 leaves `rgb` as the caller
/// had it; a hue between -1/6 and 0 is extrapolated from the first sector, (-0.1, 1, 1) to
/// (65535, 26216, 0). One would expect the hue to be taken modulo 1; callers fill `rgb` with a
/// default of their own first.
KTSOVUGEOM_API unsigned short* HSVToRGB(unsigned short* rgb, const float* hsv);

/// RGB to HSV: value is the greatest channel, saturation the spread over value (0 for black), hue
/// 0 for a grey. A tie for the greatest goes to red, then green. `HSVToRGB` of the result is `rgb`
/// again, exactly.
KTSOVUGEOM_API float* RGBToHSV(float* hsv, const unsigned short* rgb);

/// Each channel becomes 65535 - channel; the same in both directions.
KTSOVUGEOM_API unsigned short* CMYToRGB(unsigned short* rgb, const unsigned short* cmy);
KTSOVUGEOM_API unsigned short* RGBToCMY(unsigned short* cmy, const unsigned short* rgb);

/// Each channel a * weightA + b * weightB, limited to [0, 65535] (NaN: 0).
///
/// Kept: the sum is truncated, not rounded: 1 and 2 with weights 0.5 give 1, and white mixed with
/// itself by 0.04f and 0.96f gives 65534. One would expect the nearest channel; blended pictures
/// are compared bit by bit.
KTSOVUGEOM_API unsigned short* MixRGB(unsigned short* rgb, const unsigned short* a, float weightA,
                                      const unsigned short* b, float weightB);

/// Mixes hue, saturation and value by the weights and converts back with `HSVToRGB`.
///
/// Kept: when the hues are more than 0.5 apart, 0.5 is added to the weighted hue, and 1 subtracted
/// from a sum of 1 or more, whatever the weights: blue by 1 and red by 0 gives yellow. One would
/// expect the shorter way around the circle. Weights that take the hue below -1/6 leave `rgb`
/// untouched. Palettes were built with equal weights, where both agree.
KTSOVUGEOM_API unsigned short* MixHSV(unsigned short* rgb, const unsigned short* a, float weightA,
                                      const unsigned short* b, float weightB);

/// Fractions to HSV or to channels, each limited above to 1 and not limited below.
KTSOVUGEOM_API float* PctToHSV(float* hsv, float hue, float saturation, float value);
KTSOVUGEOM_API unsigned short* PctToRGB(unsigned short* rgb, float red, float green, float blue);

/// (|red| + |green| + |blue| of the difference) / 65535, from 0 to 3.
KTSOVUGEOM_API float RGBDist(const unsigned short* a, const unsigned short* b);

#ifdef __cplusplus
}
#endif
