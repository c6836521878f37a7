#pragma once

#include <cmath>
#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/shared/cls_Uid.h"
#include "gsl/gsl_Util.h"
#include "gsl/gsl_Vector.h"

class aio_ostream;
class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;
class gsl_Matrix;
class gsl_Plane;
class gsl_Segment;
class gsl_StLine;

/// A point in model units: three coordinates and an identity, 40 bytes.
///
/// The identity is unallocated unless the constructor says otherwise; copies and assignments carry
/// it along, `SetPos` does not touch it, and archives do not keep it. Points that operations
/// compute (projections, hits, sums) have an unallocated identity. The class is final and its
/// destructor trivial, so that arrays of points move and vanish at the price of their bytes.
class KTSOVUGEOM_API gsl_Point final {
  public:
    /// The origin.
    gsl_Point() noexcept = default;
    gsl_Point(double xPos, double yPos, double zPos) noexcept : x(xPos), y(yPos), z(zPos) {}
    /// The midpoint, with a newly allocated identity.
    inline gsl_Point(const gsl_Point& p1, const gsl_Point& p2) noexcept;
    /// The weighted sum w1 p1 + w2 p2, with a newly allocated identity.
    inline gsl_Point(const gsl_Point& p1, double w1, const gsl_Point& p2, double w2) noexcept;
    /// Reads the record of a point; absent coordinates are 0.
    explicit gsl_Point(cls_ReadVisitor& visitor);

    [[nodiscard]] double GetX() const noexcept { return x; }
    [[nodiscard]] double GetY() const noexcept { return y; }
    [[nodiscard]] double GetZ() const noexcept { return z; }
    /// x for 0, y for 1, z for any other index.
    [[nodiscard]] double operator[](int index) const noexcept {
        return index == 0 ? x : index == 1 ? y : z;
    }
    [[nodiscard]] double& operator[](int index) noexcept {
        return index == 0 ? x : index == 1 ? y : z;
    }
    [[nodiscard]] const cls_Uid& GetUid() const noexcept { return uid; }

    [[nodiscard]] inline double SquaredDistance(const gsl_Point& p) const noexcept;
    [[nodiscard]] double GetDistance(const gsl_Point& p) const noexcept {
        return std::sqrt(SquaredDistance(p));
    }
    /// The absolute distance to the plane of a triangle; NaN when the triangle is degenerate.
    [[nodiscard]] double GetDistance(const gsl_Point& p1, const gsl_Point& p2,
                                     const gsl_Point& p3) const;
    /// The absolute distance to the plane; NaN when its normal is null.
    [[nodiscard]] double GetDistance(const gsl_Plane& plane) const;
    /// The distance to the plane along `direction` v, |v| |signed distance| |n| / (v . n); negative
    /// when v points against the normal n.
    ///
    /// Kept: a direction parallel to the plane is not refused; the division by (nearly) zero gives
    /// an infinite, huge or undefined number where one would expect a failure. Callers test the
    /// direction first or compare the result with a bound.
    [[nodiscard]] double GetDistance(const gsl_Plane& plane, const gsl_Vector& direction) const;
    /// The distance to the infinite line.
    [[nodiscard]] double GetDistance(const gsl_StLine& line) const;
    /// The distance to the segment; `closest` receives the point of it. An end that is the closest
    /// point comes with its identity (the end point wins a tie). A foot that lies beyond an end by
    /// less than the linear tolerance is kept as it is.
    ///
    /// Kept: for a segment shorter than the linear tolerance the distance is 0 and `closest`
    /// receives this point's coordinates (keeping its own identity), however far the segment is.
    /// One would expect the distance to its start; callers drop degenerate edges by this answer.
    [[nodiscard]] double GetDistance(const gsl_Segment& segment, gsl_Point& closest) const;
    /// ((this - origin) . n) / |n|, positive on the side of the normal.
    ///
    /// Kept: a plane whose normal is null is not refused; the distance, the foot of `ProjectOn` and
    /// the hit of `RayIntersect`, which answers true, are NaN, where one would expect a failure or
    /// the point itself. Callers test the normal, as they do for degenerate triangles.
    [[nodiscard]] double GetSignedDistance(const gsl_Plane& plane) const;

    /// True when the squared distance is below LinTol^2. Unlike `==` the bound is strict.
    [[nodiscard]] inline bool IsOn(const gsl_Point& p) const;
    /// As `IsOn(p)`; `squaredDistance` receives the squared distance in either case.
    [[nodiscard]] inline bool IsOn(const gsl_Point& p, double& squaredDistance) const;
    /// True when the distance is at most the linear tolerance.
    [[nodiscard]] bool IsOn(const gsl_Plane& plane) const;
    [[nodiscard]] bool IsOn(const gsl_StLine& line) const;

    /// The foot on the plane.
    [[nodiscard]] gsl_Point ProjectOn(const gsl_Plane& plane) const;
    /// The foot on the line; `t` receives its distance from the line's origin along the direction.
    [[nodiscard]] gsl_Point ProjectOn(const gsl_StLine& line, double& t) const;
    /// Projects on the plane of a triangle. `foot` and its barycentric weights `w` (w[0] belongs to
    /// p1) are always set; the answer is that of the three-point `Bary` for the foot.
    bool ProjectOn(const gsl_Point& p1, const gsl_Point& p2, const gsl_Point& p3, gsl_Point& foot,
                   double w[3]) const;
    /// `ProjectOn` with the linear tolerance.
    bool ProjectOn(const gsl_Segment& segment, gsl_Point& foot, double& t) const;
    /// Projects on the line of a segment of length L; `t` receives the fraction of the way from
    /// start to end. True when -tol/L < t < 1 + tol/L. A segment shorter than `tol` gives this
    /// point (with its identity), t = 0 and true.
    bool ProjectOn(const gsl_Segment& segment, double tol, gsl_Point& foot, double& t) const;

    /// Meets the line through this point along `direction` with the segment from `a` to `b`. `w`
    /// receives the weights of the two-point `Bary`. False when the segment is shorter than the
    /// linear tolerance, when the lines do not meet (see `gsl_StLine::Intersect`) or when they meet
    /// beyond an end; `hit` then holds the meeting point of the lines if there is one.
    bool RayIntersect(const gsl_Point& a, const gsl_Point& b, const gsl_Vector& direction,
                      gsl_Point& hit, double w[2]) const;
    /// Meets the full line through this point along `direction` with the plane. A point on the
    /// plane is its own hit (with its identity). False, with `hit` this point, when the direction
    /// is shorter than the linear tolerance or parallel to the plane.
    bool RayIntersect(const gsl_Vector& direction, const gsl_Plane& plane, gsl_Point& hit) const;

    /// The weights of this point on the segment from `p0` to `p1`; true when it lies within the
    /// linear tolerance of the span. Points no farther apart than the tolerance give (0, 1) and
    /// true when this point is within it of p0, else false and `w` unchanged.
    ///
    /// Kept: w[0] is the weight of p1, the fraction of the way from p0 to p1, and w[1] that of p0,
    /// unlike the three-point form, where w[k] belongs to point k. Callers interpolate in this
    /// order.
    bool Bary(const gsl_Point& p0, const gsl_Point& p1, double w[2]) const;
    /// The barycentric weights of this point in a triangle, w[k] for vertex k; false when it lies
    /// outside the triangle's prism by more than the linear tolerance.
    ///
    /// Kept: a degenerate triangle gives non-finite weights and the answer true, where one would
    /// expect false. Callers test the triangle's normal, not this answer.
    bool Bary(const gsl_Point& p0, const gsl_Point& p1, const gsl_Point& p2, double w[3]) const;

    /// The point at `distance` from this one along `direction`; this point's coordinates when the
    /// direction is null.
    [[nodiscard]] gsl_Point PointAtDistInDirection(double distance,
                                                   const gsl_Vector& direction) const noexcept;

    /// Takes the coordinates of `p`, keeping the identity.
    inline void SetPos(const gsl_Point& p) noexcept;
    /// Applies rotation and translation of `matrix`. The body stands in gsl_Matrix.h.
    inline void Transform(const gsl_Matrix& matrix) noexcept;

    /// Prints `indent` blanks, "x:\t", x, "\ty:\t", y, "\tz:\t", z and a line end.
    void Print(aio_ostream& stream, int indent) const;

    [[nodiscard]] gsl_Vector operator-(const gsl_Point& p) const noexcept {
        return {x - p.x, y - p.y, z - p.z};
    }
    [[nodiscard]] gsl_Point operator+(const gsl_Vector& v) const noexcept {
        return {x + v.DeltaX(), y + v.DeltaY(), z + v.DeltaZ()};
    }
    [[nodiscard]] gsl_Point operator-(const gsl_Vector& v) const noexcept {
        return {x - v.DeltaX(), y - v.DeltaY(), z - v.DeltaZ()};
    }

    /// True when the squared distance is at most LinTolSq; identities do not take part.
    [[nodiscard]] bool operator==(const gsl_Point& p) const {
        return this == &p || SquaredDistance(p) <= gsl_Util::Instance().LinTolSq();
    }
    /// Partial orders of box tests, no sort keys: true when greater (or equal) in all coordinates.
    [[nodiscard]] bool operator>(const gsl_Point& p) const noexcept {
        return x > p.x && y > p.y && z > p.z;
    }
    [[nodiscard]] bool operator>=(const gsl_Point& p) const noexcept {
        return this == &p || (x >= p.x && y >= p.y && z >= p.z);
    }

    /// 778:1.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return 50987009; }
    [[nodiscard]] virtual std::uint32_t DynTypeId() const noexcept;
    /// Reads a point from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Writes "_x", "_y", "_z".
    virtual void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    double x = 0;
    double y = 0;
    double z = 0;
    cls_Uid uid;
};

static_assert(sizeof(gsl_Point) <= 40, "arrays of points are sized for 40 bytes each");

inline gsl_Point::gsl_Point(const gsl_Point& p1, double w1, const gsl_Point& p2, double w2) noexcept
    : x(w1 * p1.x + w2 * p2.x),
      y(w1 * p1.y + w2 * p2.y),
      z(w1 * p1.z + w2 * p2.z),
      uid(cls_Uid::AllocateUid()) {}

inline gsl_Point::gsl_Point(const gsl_Point& p1, const gsl_Point& p2) noexcept
    : x((p1.x + p2.x) * 0.5),
      y((p1.y + p2.y) * 0.5),
      z((p1.z + p2.z) * 0.5),
      uid(cls_Uid::AllocateUid()) {}

inline double gsl_Point::SquaredDistance(const gsl_Point& p) const noexcept {
    const double dx = x - p.x;
    const double dy = y - p.y;
    const double dz = z - p.z;
    return dx * dx + dy * dy + dz * dz;
}

inline bool gsl_Point::IsOn(const gsl_Point& p, double& squaredDistance) const {
    squaredDistance = SquaredDistance(p);
    const double tol = gsl_Util::Instance().LinTol();
    return tol * tol > squaredDistance;
}

inline bool gsl_Point::IsOn(const gsl_Point& p) const {
    double squaredDistance;
    return IsOn(p, squaredDistance);
}

inline void gsl_Point::SetPos(const gsl_Point& p) noexcept {
    x = p.x;
    y = p.y;
    z = p.z;
}

inline gsl_Vector::gsl_Vector(const gsl_Point& from, const gsl_Point& to) noexcept
    : gsl_Vector(to - from) {}
