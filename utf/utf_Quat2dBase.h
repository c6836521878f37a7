#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "foundation/basicutils/res_DataTypeEnm.h"

class aio_ostream;
class gsl_Matrix;
class gsl_Vector;

/// A view of a caller's array as a rotation about the 3-axis: (s, c) = (sin(t/2), cos(t/2)),
/// identity (0, 1); the quaternion (0, 0, s, c) of `utf_Quat3dBase`. Owns and allocates nothing.
template <class T>
class utf_Quat2dBase {
  public:
    explicit utf_Quat2dBase(T* components) noexcept : q(components) {}

    [[nodiscard]] static constexpr int numComponents() noexcept { return 2; }
    [[nodiscard]] static constexpr res_DataTypeEnm type() noexcept { return res_QUATERNION_2D; }

    /// The elements of the in-plane direction-cosine matrix (row i is local axis i).
    [[nodiscard]] T R11_2d() const { return 1 - 2 * (q[0] * q[0]); }
    [[nodiscard]] T R12_2d() const { return 2 * (q[0] * q[1]); }
    [[nodiscard]] T R21_2d() const { return -(2 * (q[0] * q[1])); }
    [[nodiscard]] T R22_2d() const { return R11_2d(); }
    [[nodiscard]] T R33_2d() const { return 1; }

    /// Writes row 1 as (1 - 2 s s, 2 s c, 0), row 2 as zeros and the last element of row 3 as 1.
    ///
    /// Kept: row 2 is zeroed and the first two elements of row 3 stay as the caller had them, where
    /// one would expect a full rotation matrix. Callers that need the plane use the `R.._2d`
    /// functions; callers of this one rely on the untouched elements.
    void cosines(T (*const rows)[3]) const;

    /// Writes (-s, c).
    void inverse(T* result) const;

    /// Writes the product of this and `p` (the angles add). `result` may be either factor.
    void mult(const T* p, T* result) const;

    /// The rotation of `matrix` about the 3-axis (`gsl_Matrix::GetRotationAngles`).
    void set(const gsl_Matrix& matrix);

    /// The rotation that carries the 1-axis to the in-plane vector `a`, `b` being the second axis.
    /// The identity when `a` is null or lies along the 3-axis.
    void set(const gsl_Vector& a, const gsl_Vector& b);

    /// (0, 1).
    void setIdentity();

    /// Writes (0, angle), the angle 2 asin(s) in radians.
    void toVector(T* result) const;

    /// `utf_Quat3dBase::projectOn` for (0, 0, s, c), the plane counterpart: the result is taken
    /// only when it is again a rotation about the 3-axis, which asks for `v` along +3. Else false,
    /// and nothing changes.
    [[nodiscard]] bool projectOn(const gsl_Vector& v, unsigned axis, double tol);

    /// Writes `indent` blanks and the components on one line.
    void Print(aio_ostream& stream, int indent) const;

  private:
    T* q;
};

extern template class KTSOVUGEOM_API utf_Quat2dBase<float>;
extern template class KTSOVUGEOM_API utf_Quat2dBase<double>;
