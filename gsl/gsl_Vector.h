#pragma once

#include <cmath>

#include "cow/KTSOvuGeomExport.h"
#include "gsl/gsl_Util.h"

class aio_ostream;
class gsl_Matrix;
class gsl_Plane;
class gsl_Point;

/// A free vector: three components in model units and a cache of the Euclidean length. A negative
/// cache means "not computed"; const operations fill it, so one vector belongs to one thread at a
/// time. Every vector made from components starts with an unset cache; `Negate` and `Scale` keep a
/// valid one.
///
/// Kept: `gsl_Vector()` is (0, 0, 1) with length 1, the unit Z axis, where one would expect the
/// zero vector. Callers use the default as the axis of a rotation and the normal of a plane.
class KTSOVUGEOM_API gsl_Vector {
  public:
    /// The unit Z axis.
    gsl_Vector() noexcept : x(0), y(0), z(1), magnitude(1) {}
    gsl_Vector(double xDelta, double yDelta, double zDelta) noexcept
        : x(xDelta), y(yDelta), z(zDelta), magnitude(kUnset) {}
    /// The vector from `from` to `to`. The body stands in gsl_Point.h.
    inline gsl_Vector(const gsl_Point& from, const gsl_Point& to) noexcept;
    /// The unit normal n / |n| of a triangle, n = (p2 - p1) x (p3 - p2). A triangle is degenerate
    /// when |n| is at most AngTol times the product of the two edge lengths; its normal is (0, 0,
    /// 0) with a valid cached length of 0.
    gsl_Vector(const gsl_Point& p1, const gsl_Point& p2, const gsl_Point& p3);

    [[nodiscard]] double DeltaX() const noexcept { return x; }
    [[nodiscard]] double DeltaY() const noexcept { return y; }
    [[nodiscard]] double DeltaZ() const noexcept { return z; }
    /// A component of the unit vector, 0 when the length is exactly 0.
    [[nodiscard]] double UnitX() const noexcept { return UnitComponent(x); }
    [[nodiscard]] double UnitY() const noexcept { return UnitComponent(y); }
    [[nodiscard]] double UnitZ() const noexcept { return UnitComponent(z); }
    /// x for 0, y for 1, z for any other index. There is no writing form: it would pass by the
    /// cache.
    [[nodiscard]] double operator[](int index) const noexcept {
        return index == 0 ? x : index == 1 ? y : z;
    }

    /// The Euclidean length; computed once and cached.
    [[nodiscard]] inline double Length() const noexcept;
    /// The squared length: the square of a valid cache, else the sum of squares (not cached).
    [[nodiscard]] inline double LengthSq() const noexcept;

    [[nodiscard]] double DotProduct(const gsl_Vector& v) const noexcept {
        return x * v.x + y * v.y + z * v.z;
    }
    /// this x v.
    [[nodiscard]] gsl_Vector CrossProduct(const gsl_Vector& v) const noexcept {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    /// (this x b) . c, the signed volume of the parallelepiped.
    [[nodiscard]] double TripleProduct(const gsl_Vector& b, const gsl_Vector& c) const noexcept {
        return CrossProduct(b).DotProduct(c);
    }

    /// `Normalize` with the linear tolerance.
    bool Normalize() { return Normalize(gsl_Util::Instance().LinTol()); }
    /// Divides by the length and sets the cache to exactly 1. False, and unchanged, when the length
    /// is below `tol`.
    inline bool Normalize(double tol) noexcept;
    /// The copy scaled by 1 / length, (0, 0, 0) when the length is below the linear tolerance. The
    /// cache is unset in both cases.
    [[nodiscard]] inline gsl_Vector NormalizedCopy() const;
    [[nodiscard]] gsl_Vector ScaledCopy(double factor) const noexcept {
        return {x * factor, y * factor, z * factor};
    }
    /// Multiplies by `factor`; a valid cache is multiplied by its absolute value.
    inline void Scale(double factor) noexcept;
    inline void Negate() noexcept;

    /// True when parallel either way: |this x v| < |this| tol |v|. Never true with a null vector.
    [[nodiscard]] bool IsOn(const gsl_Vector& v, double tol) const noexcept {
        return CrossProduct(v).Length() < Length() * tol * v.Length();
    }
    /// True when the unit vectors, or one and the negated other, agree within `tol` in each
    /// component. The unit components of a null vector are 0.
    [[nodiscard]] bool IsParallel(const gsl_Vector& v, double tol) const noexcept;
    /// True when the unit vectors agree within `tol` in each component.
    [[nodiscard]] bool SameDirection(const gsl_Vector& v, double tol) const noexcept;
    /// True when |this . v| < |this| |v| AngTol. Never true with a null vector.
    [[nodiscard]] bool IsOrthogonal(const gsl_Vector& v) const {
        return std::fabs(DotProduct(v)) < Length() * v.Length() * gsl_Util::Instance().AngTol();
    }

    /// The angle between the vectors in radians, in [0, pi]. `normalised` says that both have
    /// length 1, so that nothing is divided. Otherwise a vector no longer than the linear tolerance
    /// makes the angle pi/2.
    [[nodiscard]] double AngleWith(const gsl_Vector& v, bool normalised) const;
    /// The angle from this to `v` in radians, counted right-handed about `reference`.
    ///
    /// Kept: the answer can be 2 pi itself, (1, 0, 0) with (1, -1e-9, 0) about Z: the cosine rounds
    /// to 1 and 2 pi - 0 is answered, where one would expect a value below 2 pi. Callers that sort
    /// by angle rely on a direction just below the start coming last.
    [[nodiscard]] double AngleWith(const gsl_Vector& v, bool normalised,
                                   const gsl_Vector& reference) const;
    /// The angle in (-pi, pi] by which a rotation about this vector turns `a` into the half plane
    /// of `b`. False, and `angleRad` unchanged, when `a` or `b` is shorter than the linear
    /// tolerance or when their unit vectors differ by more than it along the axis.
    [[nodiscard]] bool AngleBetween(gsl_Vector a, gsl_Vector b, double& angleRad) const;

    /// A unit vector orthogonal to this one: this x (1, 1, 1) normalised, or (1, -1, 0) / sqrt 2
    /// when that product is shorter than the linear tolerance.
    ///
    /// Kept: a short vector that is not null, such as (1e-7, 0, 0), also answers (1, -1, 0) / sqrt
    /// 2, which is not orthogonal to it. Callers treat such a vector as null and take any
    /// direction.
    [[nodiscard]] gsl_Vector AnyOrthogonalUnit() const;
    /// The direction orthogonal to this vector n that lies closest to a coordinate axis: (n x p) x
    /// n, p the longest projection of an axis on the plane normal to n. Ties within the linear
    /// tolerance go to the lower axis.
    ///
    /// Kept: despite its name the result is not rescaled; its length is |n|^2 |p|, so that
    /// (0, 0, 2) answers (4, 0, 0), not (1, 0, 0). Callers normalise it themselves.
    [[nodiscard]] gsl_Vector BestAlignedOrthogonalUnit() const;
    /// The part of this vector in the plane; this vector itself when the plane's normal is shorter
    /// than the linear tolerance.
    [[nodiscard]] gsl_Vector ProjectOn(const gsl_Plane& plane) const;
    /// Applies the linear part of `matrix`. The body stands in gsl_Matrix.h.
    inline void RotateAndTransform(const gsl_Matrix& matrix) noexcept;

    /// Prints `indent` blanks, "magnitude:\t" and the length on one line, then the components as
    /// `gsl_Point::Print` does.
    void Print(aio_ostream& stream, int indent) const;

    [[nodiscard]] gsl_Vector operator+(const gsl_Vector& v) const noexcept {
        return {x + v.x, y + v.y, z + v.z};
    }
    [[nodiscard]] gsl_Vector operator-(const gsl_Vector& v) const noexcept {
        return {x - v.x, y - v.y, z - v.z};
    }
    [[nodiscard]] gsl_Vector operator*(double factor) const noexcept { return ScaledCopy(factor); }

    /// True when the difference is shorter than the linear tolerance.
    [[nodiscard]] bool operator==(const gsl_Vector& v) const {
        return this == &v || (*this - v).Length() < gsl_Util::Instance().LinTol();
    }

  protected:
    /// Writes the components and the cache as given.
    void FromCoordinates(double xDelta, double yDelta, double zDelta, double length) noexcept {
        x = xDelta;
        y = yDelta;
        z = zDelta;
        magnitude = length;
    }
    /// Gives the components and `Length()`.
    void ToCoordinates(double& xDelta, double& yDelta, double& zDelta,
                       double& length) const noexcept {
        xDelta = x;
        yDelta = y;
        zDelta = z;
        length = Length();
    }
    /// The cache as it stands, negative when unset.
    [[nodiscard]] double CachedLength() const noexcept { return magnitude; }

  private:
    static constexpr double kUnset = -1.0;

    [[nodiscard]] double UnitComponent(double component) const noexcept {
        const double length = Length();
        return length == 0 ? 0 : component / length;
    }

    double x;
    double y;
    double z;
    mutable double magnitude;
};

inline double gsl_Vector::Length() const noexcept {
    if (!(magnitude >= 0)) magnitude = std::sqrt(x * x + y * y + z * z);
    return magnitude;
}

inline double gsl_Vector::LengthSq() const noexcept {
    return magnitude >= 0 ? magnitude * magnitude : x * x + y * y + z * z;
}

inline bool gsl_Vector::Normalize(double tol) noexcept {
    const double length = Length();
    if (length < tol) return false;
    FromCoordinates(x / length, y / length, z / length, 1.0);
    return true;
}

inline gsl_Vector gsl_Vector::NormalizedCopy() const {
    const double length = Length();
    if (length < gsl_Util::Instance().LinTol()) return {0, 0, 0};
    return ScaledCopy(1 / length);
}

inline void gsl_Vector::Scale(double factor) noexcept {
    x *= factor;
    y *= factor;
    z *= factor;
    if (magnitude >= 0) magnitude *= std::fabs(factor);
}

inline void gsl_Vector::Negate() noexcept {
    x = -x;
    y = -y;
    z = -z;
}
