#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "ann/annC_AnnotationContainer.h"
#include "host/clearance/clr_Check.h"
#include "host/model/hst_Part.h"

/// The viewport that annotations are laid out for.
struct clr_Viewport {
    double width;   ///< in pixels
    double height;  ///< in pixels
    /// Where a point in model space appears, in pixels from the bottom left corner.
    std::function<annC_Point2D(const gsl_Point&)> project;
};

/// A label and an arrow for each of the first `count` findings of the report. The label, with kind,
/// length and names, stands at the left margin for the half of the places that lie farther left in
/// the picture, else at the right; the arrow runs from it to the middle between the two points
/// where the length is reached. Labels of a margin stand in the order of their places and never on
/// each other, and no more get one than have room: 15 a margin of a picture 1200 pixels high.
[[nodiscard]] annC_AnnotationContainer clr_Annotate(const std::vector<hst_Part>& parts,
                                                    const clr_Report& report, std::size_t count,
                                                    const clr_Viewport& viewport);
