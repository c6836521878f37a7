#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "gsl/gsl_Point.h"
#include "gsl/gsl_Vector.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;
class gsl_Matrix;

/// An infinite plane: a point on it and a normal of any length. The default is the XY plane. A
/// plane whose normal is null has no distances (NaN); nothing else refuses it.
class KTSOVUGEOM_API gsl_Plane {
  public:
    /// The plane z = 0, normal +Z.
    gsl_Plane() noexcept = default;
    gsl_Plane(const gsl_Point& pointOn, const gsl_Vector& normalVector) noexcept
        : origin(pointOn), normal(normalVector) {}
    /// The plane through three points: origin p1, normal `gsl_Vector(p1, p2, p3)` (null when the
    /// triangle is degenerate).
    gsl_Plane(const gsl_Point& p1, const gsl_Point& p2, const gsl_Point& p3)
        : origin(p1), normal(p1, p2, p3) {}
    /// Reads the record of a plane; absent parts are those of the default.
    explicit gsl_Plane(cls_ReadVisitor& visitor);
    gsl_Plane(const gsl_Plane&) noexcept = default;
    gsl_Plane& operator=(const gsl_Plane&) noexcept = default;
    virtual ~gsl_Plane() = default;

    [[nodiscard]] const gsl_Point& GetOrigin() const noexcept { return origin; }
    /// The normal as given, not scaled.
    [[nodiscard]] const gsl_Vector& GetNormal() const noexcept { return normal; }
    /// The normal with length 1; null when it is shorter than the linear tolerance.
    [[nodiscard]] gsl_Vector GetUnitNormal() const { return normal.NormalizedCopy(); }

    /// Moves the plane by a rigid transform.
    void Transform(const gsl_Matrix& matrix) noexcept;

    /// True when origins and normals are equal as points and vectors are: the same description, not
    /// only the same set of points.
    [[nodiscard]] bool operator==(const gsl_Plane& other) const {
        return origin == other.origin && normal == other.normal;
    }

    /// 778:4.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return 50987012; }
    [[nodiscard]] virtual std::uint32_t DynTypeId() const noexcept;
    /// Reads a plane from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Writes "_origin" (`gsl_Point`) and "_normal" (`gsl_Vector`).
    virtual void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    gsl_Point origin;
    gsl_Vector normal;
};
