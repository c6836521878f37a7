#pragma once

#include <array>
#include <cstdint>

/// A place in a picture, in pixels: to the right and down from its upper left corner, and away from
/// the viewer, from the plane through the middle of the model.
struct pic_Spot {
    double x = 0;
    double y = 0;
    double depth = 0;
};

/// A triangle of a picture. All numbers are finite.
struct pic_Face {
    std::array<pic_Spot, 3> corners;  ///< clockwise as they are seen
    std::uint32_t rgb = 0;            ///< 0xRRGGBB, shaded
};
