#pragma once

#include <array>
#include <cstdint>

#include "g3d/g3d_Color.h"
#include "host/picture/pic_Face.h"

/// The channels of a colour in one number, 0xRRGGBB.
[[nodiscard]] std::uint32_t pic_PackedColor(const g3d_Color& color);

/// A face of colour `color`, shaded. One distant light stands at the viewer's upper left; both
/// sides of a triangle are lit alike, by Lambert's law with its cosine moved from [-1, 1] to
/// [0, 1], so that shape shows also where it turns away from the light, over some ambient light.
/// Brightness comes in 64 steps, so that the parts of a flat surface share one colour.
[[nodiscard]] pic_Face pic_ShadedFace(const std::array<pic_Spot, 3>& corners,
                                      const g3d_Color& color);
