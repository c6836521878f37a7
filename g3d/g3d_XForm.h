#pragma once

#include <array>
#include <cstddef>

#include "cow/KTSOvuGeomExport.h"
#include "g3d/g3d_Point.h"
#include "g3d/g3d_Vector.h"

/// The 4 x 4 single-precision transform of the view layer, row-major, applied to column vectors:
/// clip = projection * view * point. The identity by default.
///
/// View space is right-handed and looks along -z: x to the right, y up, the eye at the origin.
/// Clip space has x, y and z in [-w, w]; after the division by w the picture spans -1 (left,
/// bottom) to 1 (right, top), and depth runs from -1 on the near plane to +1 on the far plane. In
/// perspective the clip w is the distance from the eye along the view direction, in parallel
/// projection it is 1.
///
/// Depth: the clip coordinates (x, y, z, w) keep a point to single precision, and in perspective
/// `UnProject` gives it back within 1e-5 of its distance. After the division by w a perspective
/// depth is a number of 24 bits, most of them spent next to the near plane: at distance d it tells
/// distances apart that differ by more than d * d / near * 2^-24 (near 1: 6e-6 at 10, 6 at 10000).
/// In parallel projection clip z and depth are the same and resolve (far - near) * 2^-24
/// everywhere.
///
/// Entries are floats; each is computed in double and rounded once. A plain value.
class g3d_XForm {
  public:
    /// The identity.
    constexpr g3d_XForm() noexcept = default;

    /// The entry of row and column 0 to 3; other numbers are a programming error.
    [[nodiscard]] constexpr float operator()(int row, int column) const noexcept {
        return entries[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    }
    friend constexpr bool operator==(const g3d_XForm&, const g3d_XForm&) noexcept = default;

    /// The homogeneous image of `point`, not divided by its w.
    [[nodiscard]] KTSOVUGEOM_API g3d_Point Transform(const g3d_Point& point) const noexcept;
    /// `Transform` of `count` points, bit for bit; `images` may be `points` itself.
    KTSOVUGEOM_API void Transform(g3d_Point* images, const g3d_Point* points,
                                  std::size_t count) const noexcept;

    /// Finds the point (w = 1) whose clip coordinates under this transform are `clip`, not divided
    /// by w. The distance is taken from w where w depends on the point, else from z. False, and
    /// `point` unchanged, when the transform has no inverse or a value is not finite.
    KTSOVUGEOM_API bool UnProject(const g3d_Point& clip, g3d_Point& point) const noexcept;
    /// As `UnProject` for clip coordinates already divided by w, such as a picture position with
    /// its depth; as exact as the depth (see above).
    KTSOVUGEOM_API bool UnProjectDivided(float x, float y, float depth,
                                         g3d_Point& point) const noexcept;

    KTSOVUGEOM_API void SetIdentity() noexcept;
    /// Sets the three axes as the first three columns; the rest is that of the identity.
    KTSOVUGEOM_API void SetAxes(const g3d_Vector& x, const g3d_Vector& y,
                                const g3d_Vector& z) noexcept;
    KTSOVUGEOM_API void Transpose() noexcept;
    /// Multiplies by a translation on the right: points are moved first, then transformed as
    /// before.
    KTSOVUGEOM_API void Translate(double x, double y, double z) noexcept;
    /// Sets the parallel projection of the box between the four sides and the two distances along
    /// -z. Opposite sides, and the distances, differ; otherwise entries are not finite. Note that
    /// `top` stands before `bottom`.
    KTSOVUGEOM_API void SetOrthographicProjection(float left, float right, float top, float bottom,
                                                  float nearDistance, float farDistance) noexcept;
    /// Sets the perspective projection from the origin; the four sides lie on the near plane.
    /// Otherwise as `SetOrthographicProjection`.
    KTSOVUGEOM_API void SetPerspectiveProjection(float left, float right, float top, float bottom,
                                                 float nearDistance, float farDistance) noexcept;

  private:
    friend KTSOVUGEOM_API g3d_XForm operator*(const g3d_XForm& left,
                                              const g3d_XForm& right) noexcept;

    std::array<std::array<float, 4>, 4> entries{
        {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
};

/// The transform that applies `right` first, then `left`.
[[nodiscard]] KTSOVUGEOM_API g3d_XForm operator*(const g3d_XForm& left,
                                                 const g3d_XForm& right) noexcept;
