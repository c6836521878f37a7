#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

/// A direction or displacement of the view layer: three single-precision components, (0, 0, 0) by
/// default. Sums of products are accumulated in double and rounded once, so that lengths neither
/// overflow nor vanish in between. A plain value; persistent as "_x", "_y", "_z".
class g3d_Vector {
  public:
    constexpr g3d_Vector() noexcept = default;
    constexpr g3d_Vector(float x, float y, float z) noexcept : vx(x), vy(y), vz(z) {}
    /// Reads the vector; a component that is not stored is 0.
    KTSOVUGEOM_API explicit g3d_Vector(cls_ReadVisitor& visitor);

    /// Type id 36:1 of the archives.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return 36u << 16 | 1u; }
    KTSOVUGEOM_API static void InitializeMetadata(cls_ClassRegistrar& registrar);
    KTSOVUGEOM_API void DBWrite(cls_WriteVisitor& visitor) const;

    [[nodiscard]] constexpr float X() const noexcept { return vx; }
    [[nodiscard]] constexpr float Y() const noexcept { return vy; }
    [[nodiscard]] constexpr float Z() const noexcept { return vz; }
    /// Euclidean length; infinite only when the length itself exceeds the float range.
    [[nodiscard]] KTSOVUGEOM_API float Length() const noexcept;
    [[nodiscard]] KTSOVUGEOM_API float Dot(const g3d_Vector& other) const noexcept;
    /// The cross product `*this` x `other` (right-hand rule).
    [[nodiscard]] KTSOVUGEOM_API g3d_Vector Cross(const g3d_Vector& other) const noexcept;

    /// Scales the vector to length 1. A zero or non-finite vector stays and the answer is false.
    KTSOVUGEOM_API bool Normalize() noexcept;

    friend constexpr bool operator==(const g3d_Vector&, const g3d_Vector&) noexcept = default;
    friend constexpr g3d_Vector operator+(const g3d_Vector& a, const g3d_Vector& b) noexcept {
        return {a.vx + b.vx, a.vy + b.vy, a.vz + b.vz};
    }
    friend constexpr g3d_Vector operator-(const g3d_Vector& a, const g3d_Vector& b) noexcept {
        return {a.vx - b.vx, a.vy - b.vy, a.vz - b.vz};
    }
    friend constexpr g3d_Vector operator-(const g3d_Vector& a) noexcept {
        return {-a.vx, -a.vy, -a.vz};
    }
    friend constexpr g3d_Vector operator*(const g3d_Vector& a, float factor) noexcept {
        return {a.vx * factor, a.vy * factor, a.vz * factor};
    }

  private:
    float vx = 0;
    float vy = 0;
    float vz = 0;
};
