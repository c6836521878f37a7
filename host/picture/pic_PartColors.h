#pragma once

#include <vector>

#include "g3d/g3d_Color.h"

/// `count` different colours for the parts of a model on `background`: the named colours, each as
/// far from the ones before it as can be, without those that are near to the background, near to
/// one taken already, or too dark for shading to show; a little white softens them. When they are
/// used up they come again, mixed with more and more grey.
[[nodiscard]] std::vector<g3d_Color> pic_PartColors(int count, const g3d_Color& background);
