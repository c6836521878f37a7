#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "g3d/g3d_Point.h"

/// A ball in single precision. A negative radius marks the empty sphere, which contains nothing;
/// radius 0 is the one point of the centre. The default is the empty sphere of radius -0.5 at the
/// origin. A plain value.
class g3d_Sphere {
  public:
    constexpr g3d_Sphere() noexcept = default;
    constexpr g3d_Sphere(const g3d_Point& centre, float radius) noexcept
        : middle(centre), extent(radius) {}

    [[nodiscard]] constexpr const g3d_Point& Center() const noexcept { return middle; }
    [[nodiscard]] constexpr float Radius() const noexcept { return extent; }
    /// True unless the radius is zero or more; a NaN radius is empty too.
    [[nodiscard]] constexpr bool IsEmpty() const noexcept { return !(extent >= 0); }

    /// True when the place of `point` is inside or on the surface: squared distance <= squared
    /// radius, both in double. No tolerance; false for a NaN coordinate and for the empty sphere.
    [[nodiscard]] KTSOVUGEOM_API bool Contains(const g3d_Point& point) const noexcept;

    friend constexpr bool operator==(const g3d_Sphere&, const g3d_Sphere&) noexcept = default;

  private:
    g3d_Point middle;
    float extent = -0.5f;
};
