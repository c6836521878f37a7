#pragma once

#include <cstddef>
#include <vector>

#include "cow/KTSOvuGeomExport.h"
#include "gsl/gsl_BBox.h"

/// The indices of `boxes` (`count` of them) in the Morton order of the boxes' centres on a grid of
/// 1024 cells a side over all of them: neighbours in the order are mostly neighbours in space.
/// Boxes with centres in one cell keep their order; an empty or non-finite box counts as lying in
/// some cell. Linear time. Numbering the items of a `gsl_OctreeBBox` this way keeps its sets and
/// its pair table short.
[[nodiscard]] KTSOVUGEOM_API std::vector<unsigned> gsl_MortonOrder(const gsl_BBox* boxes,
                                                                   std::size_t count);
