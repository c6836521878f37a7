#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "g3d/g3d_Point.h"
#include "g3d/g3d_Sphere.h"

/// An axis-parallel box of the view layer, in single precision: what a model occupies in world
/// coordinates. Empty by default; never holds a NaN. A plain value.
class g3d_BoundingVolume {
  public:
    /// The empty volume.
    constexpr g3d_BoundingVolume() noexcept = default;
    /// The smallest volume around the places of two corners, in any order; empty when one of them
    /// has a NaN coordinate.
    KTSOVUGEOM_API g3d_BoundingVolume(const g3d_Point& corner, const g3d_Point& opposite) noexcept;

    [[nodiscard]] constexpr bool IsEmpty() const noexcept { return empty; }
    /// The corners of least and greatest coordinates; the origin twice when empty.
    [[nodiscard]] constexpr const g3d_Point& Low() const noexcept { return low; }
    [[nodiscard]] constexpr const g3d_Point& High() const noexcept { return high; }
    /// The sphere through the corners: centre low/2 + high/2, radius half the diagonal. The empty
    /// sphere when the volume is empty.
    [[nodiscard]] KTSOVUGEOM_API g3d_Sphere BoundingSphere() const noexcept;

    /// Grows the volume by the place of `point`; a point with a NaN coordinate is ignored.
    KTSOVUGEOM_API g3d_BoundingVolume& Extend(const g3d_Point& point) noexcept;
    /// Grows the volume by the box around `sphere`; an empty sphere is ignored.
    KTSOVUGEOM_API g3d_BoundingVolume& Extend(const g3d_Sphere& sphere) noexcept;

    friend constexpr bool operator==(const g3d_BoundingVolume&,
                                     const g3d_BoundingVolume&) noexcept = default;

  private:
    g3d_Point low;
    g3d_Point high;
    bool empty = true;
};
