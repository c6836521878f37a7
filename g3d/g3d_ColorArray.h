#pragma once

#include <cstddef>

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_List.h"
#include "g3d/g3d_Color.h"

/// A list of colours, copied on write; an index out of range ends the process. Beside it the array
/// forms of the colour conversions, over packed triples.
class g3d_ColorArray : public cow_List<g3d_Color> {
  public:
    using cow_List<g3d_Color>::cow_List;
    g3d_ColorArray() = default;

    /// Writes the channels of the first `count` colours to `rgb`, three each, and returns it. Stops
    /// at the end of the list.
    KTSOVUGEOM_API unsigned short* RGB(unsigned short* rgb, int count) const;

    /// `HSVToRGB` and `RGBToHSV` of `g3d_ColorC.h` on `count` packed triples, bit for bit and in
    /// vector registers. Input and output do not overlap; both return the output. A triple that
    /// `HSVToRGB` leaves alone stays as it is.
    KTSOVUGEOM_API static unsigned short* HSVToRGB(unsigned short* rgb, const float* hsv,
                                                   std::size_t count) noexcept;
    KTSOVUGEOM_API static float* RGBToHSV(float* hsv, const unsigned short* rgb,
                                          std::size_t count) noexcept;
};
