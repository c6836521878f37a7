#include "g3d/g3d_BoundingVolume.h"

#include <algorithm>
#include <cmath>

#include "g3d/detail/g3d_Double3.h"

namespace {

bool HasNaN(const g3d_Point& p) {
    return std::isnan(p.X()) || std::isnan(p.Y()) || std::isnan(p.Z());
}

}  // namespace

g3d_BoundingVolume::g3d_BoundingVolume(const g3d_Point& corner,
                                       const g3d_Point& opposite) noexcept {
    if (HasNaN(corner.Place()) || HasNaN(opposite.Place())) return;
    Extend(corner);
    Extend(opposite);
}

g3d_Sphere g3d_BoundingVolume::BoundingSphere() const noexcept {
    if (empty) return {};
    // Halves first: the sum of two large coordinates would overflow.
    const g3d_Point centre(low.X() / 2 + high.X() / 2, low.Y() / 2 + high.Y() / 2,
                           low.Z() / 2 + high.Z() / 2);
    const g3d_Double3 diagonal = g3d_Double3(high) - g3d_Double3(low);
    return {centre, static_cast<float>(diagonal.Length() / 2)};
}

g3d_BoundingVolume& g3d_BoundingVolume::Extend(const g3d_Point& point) noexcept {
    const g3d_Point place = point.Place();
    if (HasNaN(place)) return *this;
    if (empty) {
        low = high = place;
        empty = false;
        return *this;
    }
    low = {std::min(low.X(), place.X()), std::min(low.Y(), place.Y()),
           std::min(low.Z(), place.Z())};
    high = {std::max(high.X(), place.X()), std::max(high.Y(), place.Y()),
            std::max(high.Z(), place.Z())};
    return *this;
}

g3d_BoundingVolume& g3d_BoundingVolume::Extend(const g3d_Sphere& sphere) noexcept {
    if (sphere.IsEmpty()) return *this;
    const float r = sphere.Radius();
    Extend(sphere.Center() + g3d_Vector(-r, -r, -r));
    return Extend(sphere.Center() + g3d_Vector(r, r, r));
}
