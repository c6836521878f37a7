#pragma once

#include <string>
#include <vector>

#include "g3d/g3d_Camera.h"
#include "host/model/hst_Part.h"
#include "host/picture/pic_PictureFile.h"

inline constexpr int pic_WIDTH = 1600;
inline constexpr int pic_HEIGHT = 1200;

/// The bytes of a picture file of pic_WIDTH x pic_HEIGHT pixels that shows the parts from one of
/// the ready views, each in a colour of its own, shaded, on white. The picture is a function of the
/// parts, the view and the format alone.
[[nodiscard]] std::string pic_DrawModel(const std::vector<hst_Part>& parts,
                                        g3d_SavedViewIdEnum view, pic_Format format);
