#pragma once

#include <cstdint>
#include <vector>

#include "host/picture/pic_Face.h"

/// The pixels of a picture of the faces, 0xRRGGBB, line by line from the upper left one. A pixel
/// is the mean of what is seen at 16 samples (z-buffer with supersampling); where there is no face
/// it is `background`.
[[nodiscard]] std::vector<std::uint32_t> pic_Rasterise(const std::vector<pic_Face>& faces,
                                                       std::uint32_t background, int width,
                                                       int height);
