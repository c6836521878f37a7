#pragma once

#include <vector>

#include "g3d/g3d_Color.h"

/// `count` different colours for the parts of a model: the named colours, each as far from the ones
/// before it as can be, without those that are near to one of `avoided` (the background, what is
/// drawn in another colour), near to one taken already, or too dark for shading to show; a little
/// white softens them. When they are used up they come again, mixed with more and more grey.
[[nodiscard]] std::vector<g3d_Color> pic_PartColors(int count,
                                                    const std::vector<g3d_Color>& avoided);
