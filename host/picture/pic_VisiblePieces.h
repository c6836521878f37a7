#pragma once

#include <vector>

#include "host/picture/pic_Face.h"

/// What is seen of the faces in a picture of `width` x `height` pixels, as triangles in an order in
/// which they can be painted one over the other.
///
/// A z-buffer of four samples a pixel decides. Faces that are hidden, or too small for a sample,
/// are left out; a face that is hidden in part is halved again and again (Warnock's subdivision, of
/// the face in place of the picture). The pieces that still lie across the border
/// of what hides them, at most two pixels large, come first, the farther ones before the nearer
/// ones; then, over them, all that is seen in full, sorted by colour. So borders are those of the
/// nearer face, and faces that pierce each other need no order.
[[nodiscard]] std::vector<pic_Face> pic_VisiblePieces(const std::vector<pic_Face>& faces, int width,
                                                      int height);
