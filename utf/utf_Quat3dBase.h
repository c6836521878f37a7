#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "foundation/basicutils/res_DataTypeEnm.h"

class aio_ostream;
class gsl_Matrix;
class gsl_Vector;

/// A view of a caller's array as a quaternion (x, y, z, w): vector part first, identity
/// (0, 0, 0, 1); a rotation by angle t about the unit axis n is (n sin(t/2), cos(t/2)).
///
/// The view owns nothing and allocates nothing; it is valid as long as the array. Row i of the
/// direction-cosine matrix C is the local axis i in global coordinates. Nothing normalises: a
/// quaternion that is not of unit length scales C by its squared norm. Elements are computed in
/// `T`; the changes go through double and are rounded once.
template <class T>
class utf_Quat3dBase {
  public:
    explicit utf_Quat3dBase(T* components) noexcept : q(components) {}

    [[nodiscard]] static constexpr int numComponents() noexcept { return 4; }
    [[nodiscard]] static constexpr res_DataTypeEnm type() noexcept { return res_QUATERNION_3D; }

    /// The elements of C.
    [[nodiscard]] T R11() const { return X() * X() - Y() * Y() - Z() * Z() + W() * W(); }
    [[nodiscard]] T R12() const { return 2 * (X() * Y() + W() * Z()); }
    [[nodiscard]] T R13() const { return 2 * (X() * Z() - W() * Y()); }
    [[nodiscard]] T R21() const { return 2 * (X() * Y() - W() * Z()); }
    [[nodiscard]] T R22() const { return -(X() * X()) + Y() * Y() - Z() * Z() + W() * W(); }
    [[nodiscard]] T R23() const { return 2 * (Y() * Z() + W() * X()); }
    [[nodiscard]] T R31() const { return 2 * (X() * Z() + W() * Y()); }
    [[nodiscard]] T R32() const { return 2 * (Y() * Z() - W() * X()); }
    [[nodiscard]] T R33() const { return -(X() * X()) - Y() * Y() + Z() * Z() + W() * W(); }

    /// Writes C row by row.
    void cosines(T (*const rows)[3]) const;

    /// Writes (-x, -y, -z, w), the inverse of a unit quaternion. Not divided by the norm.
    void inverse(T* result) const;

    /// Writes the Hamilton product of this (left) and `p`. `result` may be either factor.
    void mult(const T* p, T* result) const;

    /// The quaternion of the frame whose axes are the columns of `matrix`.
    void set(const gsl_Matrix& matrix);

    /// The quaternion of the frame whose local axes are the three vectors, each normalised first (a
    /// vector of zero length counts as zero components). A left-handed triple is repaired by
    /// reversing `y`. Shepperd's method, see `utf_getquat`.
    void set(const gsl_Vector& x, const gsl_Vector& y, const gsl_Vector& z);

    /// (0, 0, 0, 1).
    void setIdentity();

    /// Writes the rotation vector: axis times angle in radians, the angle in [0, 2 pi]; three
    /// values. Zero when 1 - w w is exactly 0. A |w| above 1 gives NaN.
    void toVector(T* result) const;

    /// Re-aims the frame: the local axis `axis` (0, 1, 2), projected on the plane with normal `v`,
    /// becomes the second axis of the frame and `v` its third. False, and nothing changed, when
    /// |local axis . v| exceeds `tol` (or is NaN) or `axis` is above 2.
    [[nodiscard]] bool projectOn(const gsl_Vector& v, unsigned axis, double tol);

    /// Writes `indent` blanks and the components on one line.
    void Print(aio_ostream& stream, int indent) const;

  private:
    T X() const { return q[0]; }
    T Y() const { return q[1]; }
    T Z() const { return q[2]; }
    T W() const { return q[3]; }

    T* q;
};

extern template class KTSOVUGEOM_API utf_Quat3dBase<float>;
extern template class KTSOVUGEOM_API utf_Quat3dBase<double>;
