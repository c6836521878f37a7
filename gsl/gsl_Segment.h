#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "gsl/gsl_Point.h"
#include "gsl/gsl_Vector.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;
class gsl_Matrix;

/// A straight segment between two points, directed from start to end. The default is a degenerate
/// one at the origin; segments shorter than the linear tolerance count as degenerate.
class KTSOVUGEOM_API gsl_Segment {
  public:
    gsl_Segment() noexcept = default;
    gsl_Segment(const gsl_Point& from, const gsl_Point& to) noexcept : start(from), end(to) {}
    /// Reads the record of a segment; absent ends are the origin.
    explicit gsl_Segment(cls_ReadVisitor& visitor);
    gsl_Segment(const gsl_Segment&) noexcept = default;
    gsl_Segment& operator=(const gsl_Segment&) noexcept = default;
    virtual ~gsl_Segment() = default;

    [[nodiscard]] const gsl_Point& GetStart() const noexcept { return start; }
    [[nodiscard]] const gsl_Point& GetEnd() const noexcept { return end; }
    /// The vector from start to end.
    [[nodiscard]] gsl_Vector GetDirection() const noexcept { return {start, end}; }
    [[nodiscard]] double Length() const noexcept { return start.GetDistance(end); }
    /// Moves the segment by a rigid transform.
    void Transform(const gsl_Matrix& matrix) noexcept;

    /// True when starts and ends are equal as points are; the reversed segment is another one.
    [[nodiscard]] bool operator==(const gsl_Segment& other) const {
        return start == other.start && end == other.end;
    }

    /// 778:8.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return 50987016; }
    [[nodiscard]] virtual std::uint32_t DynTypeId() const noexcept;
    /// Reads a segment from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Writes "_start" and "_end", both `gsl_Point`.
    virtual void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    gsl_Point start;
    gsl_Point end;
};
