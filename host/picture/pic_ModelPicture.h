#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ann/annC_Annotation.h"
#include "g3d/g3d_Camera.h"
#include "gsl/gsl_Point.h"
#include "host/model/hst_Part.h"
#include "host/picture/pic_Marking.h"
#include "host/picture/pic_PictureFile.h"

inline constexpr int pic_WIDTH = 1600;
inline constexpr int pic_HEIGHT = 1200;
/// What a marked picture keeps free for labels at its left and at its right, in pixels.
inline constexpr int pic_LABEL_MARGIN = 272;

/// The bytes of a picture file of pic_WIDTH x pic_HEIGHT pixels that shows the parts from one of
/// the ready views, each in a colour of its own, shaded, on white. The picture is a function of the
/// parts, the view and the format alone.
[[nodiscard]] std::string pic_DrawModel(const std::vector<hst_Part>& parts,
                                        g3d_SavedViewIdEnum view, pic_Format format);

/// The same with what a marking points out: marked parts each in a colour of its own, the
/// others as grey ghosts, through which they are seen; over them the annotations and the legend.
[[nodiscard]] std::string pic_DrawMarkedModel(const std::vector<hst_Part>& parts,
                                              const pic_Marking& marking, g3d_SavedViewIdEnum view,
                                              pic_Format format);

/// Where points in model space appear in a marked picture of the parts: in pixels from its bottom
/// left corner, x to the right and y upwards.
[[nodiscard]] std::function<annC_Point2D(const gsl_Point&)> pic_PlaceOf(
    const std::vector<hst_Part>& parts, g3d_SavedViewIdEnum view);
