#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/shared/cls_Uid.h"
#include "gsl/gsl_Point.h"

class aio_ostream;
class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;
class g3d_Sphere;
class gsl_Matrix;

/// An axis-aligned box in model units: two corners and an identity, 96 bytes.
///
/// A box is empty when low > high on any axis; the canonical empty box has low = (0, 0, 0) and
/// high = (-1, -1, -1) and is the default. A single point is a box of size zero, not an empty one.
/// Corners carry the identities of the points they were taken from; the identity of the box is
/// unallocated unless it was copied from a box that has one. Archives keep neither. Nothing fails
/// or throws; corners that are not numbers count as not empty. A plain value, copied at the price
/// of its bytes.
class KTSOVUGEOM_API gsl_BBox final {
  public:
    /// The canonical empty box.
    gsl_BBox() noexcept : high(-1, -1, -1) {}
    /// The corners as given, with their identities; they are not put in order.
    gsl_BBox(const gsl_Point& lowCorner, const gsl_Point& highCorner) noexcept
        : low(lowCorner), high(highCorner) {}
    /// Reads the record of a box; a corner that is not stored is the origin.
    explicit gsl_BBox(cls_ReadVisitor& visitor);

    [[nodiscard]] const gsl_Point& Low() const noexcept { return low; }
    [[nodiscard]] const gsl_Point& High() const noexcept { return high; }
    [[nodiscard]] gsl_Point& High() noexcept { return high; }
    [[nodiscard]] const cls_Uid& GetUid() const noexcept { return uid; }

    [[nodiscard]] bool IsEmpty() const noexcept {
        return low.GetX() > high.GetX() || low.GetY() > high.GetY() || low.GetZ() > high.GetZ();
    }
    /// The midpoint of the corners, with a newly allocated identity.
    [[nodiscard]] gsl_Point Center() const noexcept { return {low, high}; }
    /// high - low; (0, 0, 0) for an empty box.
    [[nodiscard]] gsl_Vector Diag() const noexcept {
        return IsEmpty() ? gsl_Vector(0, 0, 0) : high - low;
    }
    /// The length of the diagonal; -1 for an empty box.
    [[nodiscard]] double Size() const noexcept { return IsEmpty() ? -1.0 : Diag().Length(); }
    /// high - low on the axis as it stands, negative where the corners of an empty box are crossed.
    [[nodiscard]] double XLen() const noexcept { return high.GetX() - low.GetX(); }
    [[nodiscard]] double YLen() const noexcept { return high.GetY() - low.GetY(); }
    [[nodiscard]] double ZLen() const noexcept { return high.GetZ() - low.GetZ(); }

    /// True when the point is inside or beyond a face by at most 1e-10 model units.
    ///
    /// Kept: the tolerance is absolute, whatever the size of the box and whatever the linear
    /// tolerance of `gsl_Util` says: a point 5e-7 outside coincides with a point of the face, yet
    /// is not contained. Searches that classify points into boxes rely on the narrow bound.
    [[nodiscard]] bool ContainsPoint(const gsl_Point& p) const noexcept;
    /// True when both corners of `b` are contained, each with the tolerance of `ContainsPoint`.
    [[nodiscard]] bool ContainsBox(const gsl_BBox& b) const noexcept;
    /// True unless the boxes are apart on some axis: the length of their union is there greater
    /// than the sum of their lengths. Boxes that touch intersect.
    ///
    /// Kept: the lengths are rounded before they are compared, so a few of the boxes that touch or
    /// are apart by roundings are told wrongly: on x, (0.3 .. 0.8) and (0.8 .. 0.9) do not
    /// intersect. One would compare the corners; trees built with this test must split the same way
    /// again.
    [[nodiscard]] bool Intersect(const gsl_BBox& b) const noexcept;
    /// True when the eight corners, in single precision, are inside `sphere`.
    [[nodiscard]] bool SphereContainsBox(const g3d_Sphere& sphere) const noexcept;
    /// The sphere about the box in single precision: its midpoint and half of `Size()`.
    ///
    /// Kept: an empty box answers a sphere of radius -0.5 (half of -1) at the midpoint of its
    /// corners, where one would expect radius 0 or a failure. The view layer takes a negative
    /// radius as the mark of an empty extent.
    [[nodiscard]] g3d_Sphere GetExtent() const noexcept;

    /// Take corners as given, with their identities.
    void SetLow(const gsl_Point& p) noexcept { low = p; }
    void SetHigh(const gsl_Point& p) noexcept { high = p; }
    void SetLowHigh(const gsl_Point& lowCorner, const gsl_Point& highCorner) noexcept {
        const gsl_Point newHigh = highCorner;  // either may be a corner of this box
        low = lowCorner;
        high = newHigh;
    }
    /// Becomes the canonical empty box, keeping the identity of the box.
    void Vacate() noexcept { SetLowHigh(gsl_Point(), gsl_Point(-1, -1, -1)); }

    /// Grows to include the point. An empty box becomes the point: both corners take its
    /// coordinates and its identity.
    inline void Add(const gsl_Point& p) noexcept;
    /// Grows to include the box; an empty `b` changes nothing, and an empty box takes the corners
    /// of `b` with their identities.
    inline void Add(const gsl_BBox& b) noexcept;
    /// Becomes the box about the transformed corners; nothing happens to an empty box. The corners
    /// and the box lose their identities.
    void Transform(const gsl_Matrix& matrix) noexcept;

    /// Prints the low corner, then the high one, as `gsl_Point::Print` does.
    void Print(aio_ostream& stream, int indent) const;

    /// True when both corners are equal as points are; identities do not take part.
    [[nodiscard]] bool operator==(const gsl_BBox& b) const {
        return low == b.low && high == b.high;
    }

    /// 778:7.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return 778u << 16 | 7u; }
    [[nodiscard]] virtual std::uint32_t DynTypeId() const noexcept;
    /// Reads a box from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Writes "_low", "_high" as embedded points without identities.
    virtual void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    inline void Extend(const gsl_Point& from, const gsl_Point& to) noexcept;

    gsl_Point low;
    gsl_Point high;
    cls_Uid uid;
};

inline void gsl_BBox::Add(const gsl_Point& p) noexcept {
    if (IsEmpty()) {
        SetLowHigh(p, p);
    } else {
        Extend(p, p);
    }
}

inline void gsl_BBox::Add(const gsl_BBox& b) noexcept {
    if (b.IsEmpty()) return;
    if (IsEmpty()) {
        SetLowHigh(b.low, b.high);
    } else {
        Extend(b.low, b.high);
    }
}

/// Written out for each axis: a loop would keep the boxes of inlined callers in memory.
inline void gsl_BBox::Extend(const gsl_Point& from, const gsl_Point& to) noexcept {
    low[0] = from.GetX() < low.GetX() ? from.GetX() : low.GetX();
    low[1] = from.GetY() < low.GetY() ? from.GetY() : low.GetY();
    low[2] = from.GetZ() < low.GetZ() ? from.GetZ() : low.GetZ();
    high[0] = to.GetX() > high.GetX() ? to.GetX() : high.GetX();
    high[1] = to.GetY() > high.GetY() ? to.GetY() : high.GetY();
    high[2] = to.GetZ() > high.GetZ() ? to.GetZ() : high.GetZ();
}
