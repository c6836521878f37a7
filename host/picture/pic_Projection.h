#pragma once

#include <vector>

#include "g3d/g3d_Camera.h"
#include "gsl/gsl_Point.h"
#include "host/model/hst_Part.h"
#include "host/picture/pic_Face.h"

/// Where the points of a model stand in a picture of it: a parallel camera in one of the ready
/// views, fitted to the sphere around the middle of the model's box that all its triangles lie in,
/// then zoomed until they fill the picture but for a small margin.
///
/// The camera works in single precision. It is given the model moved to the origin and scaled to
/// radius 1 in double precision, so that neither a far place nor an extreme size costs detail.
class pic_Projection {
  public:
    /// For a picture of `width` x `height` pixels, of which the part `sideMargin` at the left and
    /// at the right stays free besides the small margin. Throws `hst_Error` for a model whose
    /// extent is no finite number.
    pic_Projection(const std::vector<hst_Part>& parts, g3d_SavedViewIdEnum view, int width,
                   int height, double sideMargin = 0);

    /// The spot at which a point in model space appears.
    [[nodiscard]] pic_Spot Project(const gsl_Point& place) const noexcept;

  private:
    void FindSphere(const std::vector<hst_Part>& parts);
    void ZoomToModel(const std::vector<hst_Part>& parts, double sideMargin,
                     g3d_Camera& camera) const;
    void Follow(g3d_Camera& camera);

    double width;
    double height;
    gsl_Point centre;
    double radius = 0;
    g3d_XForm toClip;
    double pixelsPerDepth = 0;  ///< of clip space
};
