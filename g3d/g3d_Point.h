#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "g3d/g3d_Vector.h"

/// A place of the view layer in four homogeneous single-precision coordinates; the origin
/// (0, 0, 0, 1) by default.
///
/// w is normally 1. When it is neither 0 nor 1 the place is (x/w, y/w, z/w); with w = 0 the three
/// coordinates are taken as they stand. A plain value; persistent as "_x", "_y", "_z", "_w".
class g3d_Point {
  public:
    constexpr g3d_Point() noexcept = default;
    constexpr g3d_Point(float x, float y, float z, float w = 1) noexcept
        : px(x), py(y), pz(z), pw(w) {}
    /// Reads the point; a coordinate that is not stored is that of the origin.
    KTSOVUGEOM_API explicit g3d_Point(cls_ReadVisitor& visitor);

    /// Type id 36:2 of the archives.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return 36u << 16 | 2u; }
    KTSOVUGEOM_API static void InitializeMetadata(cls_ClassRegistrar& registrar);
    KTSOVUGEOM_API void DBWrite(cls_WriteVisitor& visitor) const;

    [[nodiscard]] constexpr float X() const noexcept { return px; }
    [[nodiscard]] constexpr float Y() const noexcept { return py; }
    [[nodiscard]] constexpr float Z() const noexcept { return pz; }
    [[nodiscard]] constexpr float W() const noexcept { return pw; }
    /// The place with w = 1.
    [[nodiscard]] KTSOVUGEOM_API g3d_Point Place() const noexcept;
    /// The distance between the two places, computed in double and rounded once.
    [[nodiscard]] KTSOVUGEOM_API float Distance(const g3d_Point& other) const noexcept;

    /// Equality of the four coordinates, not of the places.
    friend constexpr bool operator==(const g3d_Point&, const g3d_Point&) noexcept = default;

  private:
    float px = 0;
    float py = 0;
    float pz = 0;
    float pw = 1;
};

/// The difference of the two places, each component rounded once.
[[nodiscard]] KTSOVUGEOM_API g3d_Vector operator-(const g3d_Point& a, const g3d_Point& b) noexcept;
/// The place moved by `v`, with w = 1.
[[nodiscard]] KTSOVUGEOM_API g3d_Point operator+(const g3d_Point& a, const g3d_Vector& v) noexcept;
