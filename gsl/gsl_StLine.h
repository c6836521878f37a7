#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "gsl/gsl_Point.h"
#include "gsl/gsl_Vector.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;
class gsl_Matrix;

/// An infinite straight line: a point on it and a direction of any length. The default is the Z
/// axis. A line whose direction is null has no distances (NaN) and meets nothing.
class KTSOVUGEOM_API gsl_StLine {
  public:
    /// The Z axis.
    gsl_StLine() noexcept = default;
    gsl_StLine(const gsl_Point& pointOn, const gsl_Vector& along) noexcept
        : origin(pointOn), direction(along) {}
    /// The line from `from` (its origin) through `to`.
    gsl_StLine(const gsl_Point& from, const gsl_Point& to) noexcept
        : origin(from), direction(from, to) {}
    /// Reads the record of a line; absent parts are those of the default.
    explicit gsl_StLine(cls_ReadVisitor& visitor);
    gsl_StLine(const gsl_StLine&) noexcept = default;
    gsl_StLine& operator=(const gsl_StLine&) noexcept = default;
    virtual ~gsl_StLine() = default;

    [[nodiscard]] const gsl_Point& GetOrigin() const noexcept { return origin; }
    /// The direction as given, not scaled.
    [[nodiscard]] const gsl_Vector& GetDirection() const noexcept { return direction; }
    /// The direction with length 1; null when it is shorter than the linear tolerance.
    [[nodiscard]] gsl_Vector GetUnitDirection() const { return direction.NormalizedCopy(); }

    /// Meets two lines. True when they come within the linear tolerance of each other in one place;
    /// `hit` is then the point of this line closest to the other. False, with `hit` unchanged, for
    /// skew lines, for parallel ones (sine of the angle at most AngTol), coincident ones included,
    /// and when a direction is shorter than the linear tolerance.
    bool Intersect(const gsl_StLine& other, gsl_Point& hit) const;
    /// Moves the line by a rigid transform.
    void Transform(const gsl_Matrix& matrix) noexcept;

    /// True when origins and directions are equal as points and vectors are: the same description,
    /// not only the same set of points.
    [[nodiscard]] bool operator==(const gsl_StLine& other) const {
        return origin == other.origin && direction == other.direction;
    }

    /// 778:6.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return 50987014; }
    [[nodiscard]] virtual std::uint32_t DynTypeId() const noexcept;
    /// Reads a line from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Writes "_origin" (`gsl_Point`) and "_direction" (`gsl_Vector`).
    virtual void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    gsl_Point origin;
    gsl_Vector direction;
};
