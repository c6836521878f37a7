#include "host/picture/pic_Projection.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/model/hst_Error.h"

namespace {

constexpr double kMargin = 0.04;  // of the picture, on each side
// The least part of the fitted window that is zoomed to: a needle that is seen end-on stays thin,
// and the camera's single precision stays below a tenth of a pixel.
constexpr double kLeastWindow = 1e-3;

/// Calls `visit` for each corner of each triangle.
template <class Visit>
void ForEachCorner(const std::vector<hst_Part>& parts, const Visit& visit) {
    for (const hst_Part& part : parts) {
        for (int i = 0; i < part.TriangleCount(); ++i) {
            for (const int vertex : part.Triangle(i)) visit(part.PlacedVertex(vertex));
        }
    }
}

/// An interval that grows.
struct Extent {
    void Add(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    [[nodiscard]] double Middle() const { return (low + high) / 2; }
    /// Half of what the picture has to show for the margins to stay free.
    [[nodiscard]] double HalfWithMargins(double margin = 0) const {
        return std::max((high - low) / (1 - 2 * (kMargin + margin)), kLeastWindow) / 2;
    }

    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
};

}  // namespace

pic_Projection::pic_Projection(const std::vector<hst_Part>& parts, g3d_SavedViewIdEnum view,
                               int widthPixels, int heightPixels, double sideMargin)
    : width(widthPixels), height(heightPixels) {
    FindSphere(parts);
    g3d_Camera camera;
    camera.SetProjection(g3d_PARALLEL);
    camera.Canned(g3d_Sphere(g3d_Point(), 1), view);
    camera.FitVP(static_cast<float>(width), static_cast<float>(height));
    Follow(camera);
    ZoomToModel(parts, sideMargin, camera);
    Follow(camera);
}

void pic_Projection::FindSphere(const std::vector<hst_Part>& parts) {
    gsl_BBox box;
    for (const hst_Part& part : parts) box.Add(part.PlacedBox());
    // Halved before the sum, which could leave the range of a double.
    const auto middle = [&](int axis) { return box.Low()[axis] / 2 + box.High()[axis] / 2; };
    centre = {middle(0), middle(1), middle(2)};
    double farthest = 0;
    ForEachCorner(parts, [&](const gsl_Point& corner) {
        farthest = std::max(farthest,
                            std::hypot(corner.GetX() - centre.GetX(), corner.GetY() - centre.GetY(),
                                       corner.GetZ() - centre.GetZ()));
    });
    if (!std::isfinite(farthest) || !std::isfinite(centre.GetX() + centre.GetY() + centre.GetZ())) {
        throw hst_Error("the model is too large for a picture");
    }
    radius = farthest > 0 ? farthest : 1;
}

void pic_Projection::ZoomToModel(const std::vector<hst_Part>& parts, double sideMargin,
                                 g3d_Camera& camera) const {
    Extent across;
    Extent up;
    ForEachCorner(parts, [&](const gsl_Point& corner) {
        const pic_Spot spot = Project(corner);
        across.Add(spot.x / width);
        up.Add(1 - spot.y / height);
    });
    if (!(across.low <= across.high)) return;  // no triangles
    camera.Zoom(static_cast<float>(across.Middle() - across.HalfWithMargins(sideMargin)),
                static_cast<float>(up.Middle() - up.HalfWithMargins()),
                static_cast<float>(across.Middle() + across.HalfWithMargins(sideMargin)),
                static_cast<float>(up.Middle() + up.HalfWithMargins()), false);
}

void pic_Projection::Follow(g3d_Camera& camera) {
    camera.SetLayerXForm(true, &toClip);
    pixelsPerDepth = (camera.GetFar() - camera.GetNear()) / 2.0 * height / camera.GetWindowHeight();
}

pic_Spot pic_Projection::Project(const gsl_Point& place) const noexcept {
    const auto scaled = [this](double value, double middle) {
        return static_cast<float>((value - middle) / radius);
    };
    const g3d_Point clip = toClip.Transform(g3d_Point(scaled(place.GetX(), centre.GetX()),
                                                      scaled(place.GetY(), centre.GetY()),
                                                      scaled(place.GetZ(), centre.GetZ())));
    return {(1.0 + clip.X()) * width / 2, (1.0 - clip.Y()) * height / 2, clip.Z() * pixelsPerDepth};
}
