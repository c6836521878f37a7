#pragma once

#include <cstdint>
#include <vector>

#include "host/picture/pic_Face.h"

/// What a picture shows: surfaces, and ghosts, which let what lies behind them shine through.
struct pic_Scene {
    std::vector<pic_Face> faces;
    std::vector<pic_Face> ghosts;
};

/// How much of what is seen is the ghost in front.
inline constexpr double pic_GHOST_OPACITY = 0.3;
/// The mix of a ghost over what lies behind it; all are 0xRRGGBB.
[[nodiscard]] std::uint32_t pic_MixedColor(std::uint32_t ghost, std::uint32_t behind);

/// The pixels of a picture of the scene, 0xRRGGBB, line by line from the upper left one. A pixel
/// is the mean of what is seen at 16 samples (z-buffer with supersampling): the nearest face, or
/// `background` where there is none, and over it the nearest ghost, when that is nearer.
[[nodiscard]] std::vector<std::uint32_t> pic_Rasterise(const pic_Scene& scene,
                                                       std::uint32_t background, int width,
                                                       int height);
