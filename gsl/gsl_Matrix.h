#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "gsl/gsl_Point.h"
#include "gsl/gsl_Vector.h"

template <class T>
class cow_2DArray;

/// A 4 x 4 homogeneous transform, row-major, m[row][column], applied to column vectors: the upper
/// left 3 x 3 block is the linear part, column 3 of rows 0 to 2 the translation, row 3 is (0, 0, 0,
/// 1) in normal use. Angles are radians unless a name says degrees.
///
/// An identity flag goes with the entries: 1 known identity, 0 known not, anything else unknown.
/// Every setter and concatenation makes it unknown, and only `IsIdentity`, `InverseRigidTransform`
/// and `GetEulerianAnglesZYX` look at it. `IsIdentity` writes flag and entries although const, so
/// one matrix belongs to one thread at a time.
class KTSOVUGEOM_API gsl_Matrix {
  public:
    /// The identity, flag 1.
    gsl_Matrix() noexcept = default;

    /// Becomes the identity, flag 1.
    void FillIdentity() noexcept;
    /// True when the flag says so; when it is unknown, when rows 0 to 2 are those of the identity,
    /// 1e-8 either way (row 3 is not tested). The test keeps its answer in the flag, and a success
    /// makes all 16 entries exact.
    [[nodiscard]] bool IsIdentity() const noexcept;

    /// Becomes the right-handed rotation about `axis` through the origin; the identity when the
    /// axis is shorter than the linear tolerance.
    ///
    /// Kept: the flag stays 1, so that `IsIdentity()` answers true, `InverseRigidTransform()` the
    /// identity and `GetEulerianAnglesZYX` zeros, while `Transform` rotates. One would expect an
    /// unknown flag; stored matrices carry the flag, and their readers rely on it.
    void AxisRotation(const gsl_Vector& axis, double angleRad);
    /// Becomes the right-handed rotation about `axis` through `point`, flag unknown; the identity
    /// with flag 1 when the axis is shorter than the linear tolerance.
    void AxisRotation(const gsl_Point& point, const gsl_Vector& axis, double angleRad);

    /// Becomes next x this: `next` is applied after this transform.
    void Concatenate(const gsl_Matrix& next) noexcept { *this = GetConcatenated(next); }
    /// next x this, flag unknown.
    [[nodiscard]] gsl_Matrix GetConcatenated(const gsl_Matrix& next) const noexcept;
    /// The inverse of a rigid transform: block transposed, translation -R^T t, flag unknown; the
    /// identity when the flag is 1. A scaling is not inverted.
    [[nodiscard]] gsl_Matrix InverseRigidTransform() const noexcept;

    /// The rotation of the block as an axis and an angle in [0, 4 pi/3], through its quaternion by
    /// the largest pivot, m[3][3] standing for the quaternion's norm. `axis` is a unit vector, or
    /// null when the angle is at most AngTol. `translation` receives the translation column, not a
    /// point of the axis.
    void GetAxisRotation(gsl_Point& translation, gsl_Vector& axis, double& angleRad) const;
    /// The angles of R = Rz(aDeg) Ry(bDeg) Rx(cDeg) in degrees; zeros when the flag is 1.
    ///
    /// Kept: when m00 and m10 are exactly 0, c is atan2(m01, m11) also for b = -90 degrees, where
    /// its sign is then the wrong one. Only exact zeros come here; stored angles depend on it.
    void GetEulerianAnglesZYX(double& aDeg, double& bDeg, double& cDeg) const noexcept;
    /// The angles of R = Rz(rzRad) Ry(ryRad) Rx(rxRad); rz is 0 in gimbal lock, when
    /// sqrt(m00^2 + m10^2) is at most 2^-19.
    void GetRotationAngles(double& rxRad, double& ryRad, double& rzRad) const noexcept;

    void GetTranslation(gsl_Vector& translation) const noexcept {
        translation = gsl_Vector(m[0][3], m[1][3], m[2][3]);
    }
    /// The translation column as a point.
    [[nodiscard]] gsl_Point NewOrigin() const noexcept { return {m[0][3], m[1][3], m[2][3]}; }
    /// The first three entries of column `index`, 0 to 3.
    [[nodiscard]] gsl_Vector NewAxis(int index) const noexcept {
        return {m[0][index], m[1][index], m[2][index]};
    }
    [[nodiscard]] gsl_Vector NewXAxis() const noexcept { return NewAxis(0); }
    [[nodiscard]] gsl_Vector NewYAxis() const noexcept { return NewAxis(1); }
    [[nodiscard]] gsl_Vector NewZAxis() const noexcept { return NewAxis(2); }
    /// Copies the 16 entries, row by row.
    void AsArray(double array[4][4]) const noexcept;

    void SetTranslation(const gsl_Vector& v) noexcept { SetColumn(3, v); }
    /// Sets the first three entries of row `index`, 0 to 3.
    void SetRow(int index, const gsl_Vector& v) noexcept;
    /// Sets the first three entries of column `index`, 0 to 3.
    void SetColumn(int index, const gsl_Vector& v) noexcept;
    /// Sets the columns of the block to the three vectors, each divided by its length.
    ///
    /// Kept: a null vector is not refused; its column becomes NaN, where one would expect zeros or
    /// a failure. Callers check their axes, and a NaN shows that they did not.
    void SetRotationVectors(const gsl_Vector& vx, const gsl_Vector& vy,
                            const gsl_Vector& vz) noexcept;

    /// p' = R p + t; row 3 is ignored.
    inline void Transform(gsl_Point& p) const noexcept;
    /// v' = R v; the length cache is unset.
    inline void Transform(gsl_Vector& v) const noexcept;

    /// True when each of the 16 entries differs by at most 0.001.
    [[nodiscard]] bool operator==(const gsl_Matrix& other) const noexcept;

  protected:
    /// Takes the entries of a 4 x 4 array and the flag.
    void From2DArray(cow_2DArray<double> array, int flag);
    /// Makes `array` the 4 x 4 array of the entries.
    void To2DArray(cow_2DArray<double>* array) const;
    [[nodiscard]] int IdentityFlag() const noexcept { return identityFlag; }

  private:
    static constexpr int kIdentity = 1;
    static constexpr int kNotIdentity = 0;
    static constexpr int kUnknown = -1;

    // Mutable: the const test for identity repairs the entries and keeps its answer.
    mutable double m[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    mutable int identityFlag = kIdentity;
};

/// Fills the 3 x 3 block of `block` with the right-handed rotation about `axis`, whose length the
/// caller gives (formula of Rodrigues); the other entries stay.
KTSOVUGEOM_API void axRot(const gsl_Vector& axis, double length, double angleRad,
                          double block[4][4]) noexcept;

inline void gsl_Matrix::Transform(gsl_Point& p) const noexcept {
    const double x = p.GetX();
    const double y = p.GetY();
    const double z = p.GetZ();
    p[0] = m[0][0] * x + m[0][1] * y + m[0][2] * z + m[0][3];
    p[1] = m[1][0] * x + m[1][1] * y + m[1][2] * z + m[1][3];
    p[2] = m[2][0] * x + m[2][1] * y + m[2][2] * z + m[2][3];
}

inline void gsl_Matrix::Transform(gsl_Vector& v) const noexcept {
    const double x = v.DeltaX();
    const double y = v.DeltaY();
    const double z = v.DeltaZ();
    v = gsl_Vector(m[0][0] * x + m[0][1] * y + m[0][2] * z, m[1][0] * x + m[1][1] * y + m[1][2] * z,
                   m[2][0] * x + m[2][1] * y + m[2][2] * z);
}

inline void gsl_Point::Transform(const gsl_Matrix& matrix) noexcept { matrix.Transform(*this); }

inline void gsl_Vector::RotateAndTransform(const gsl_Matrix& matrix) noexcept {
    matrix.Transform(*this);
}
