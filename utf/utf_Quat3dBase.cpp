#include "utf/utf_Quat3dBase.h"

#include <cmath>

#include "foundation/coreutils/aio_ostream.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_Plane.h"
#include "gsl/gsl_Point.h"
#include "gsl/gsl_Vector.h"
#include "utf/utf_RotationC.h"

namespace {

void SetColumn(double* matrix, int column, const gsl_Vector& axis) {
    matrix[3 * column] = axis.UnitX();
    matrix[3 * column + 1] = axis.UnitY();
    matrix[3 * column + 2] = axis.UnitZ();
}

}  // namespace

template <class T>
void utf_Quat3dBase<T>::cosines(T (*const rows)[3]) const {
    rows[0][0] = R11();
    rows[0][1] = R12();
    rows[0][2] = R13();
    rows[1][0] = R21();
    rows[1][1] = R22();
    rows[1][2] = R23();
    rows[2][0] = R31();
    rows[2][1] = R32();
    rows[2][2] = R33();
}

template <class T>
void utf_Quat3dBase<T>::inverse(T* result) const {
    result[0] = -q[0];
    result[1] = -q[1];
    result[2] = -q[2];
    result[3] = q[3];
}

template <class T>
void utf_Quat3dBase<T>::mult(const T* p, T* result) const {
    const T x = q[3] * p[0] + p[3] * q[0] + (q[1] * p[2] - q[2] * p[1]);
    const T y = q[3] * p[1] + p[3] * q[1] + (q[2] * p[0] - q[0] * p[2]);
    const T z = q[3] * p[2] + p[3] * q[2] + (q[0] * p[1] - q[1] * p[0]);
    const T w = q[3] * p[3] - (q[0] * p[0] + q[1] * p[1] + q[2] * p[2]);
    result[0] = x;
    result[1] = y;
    result[2] = z;
    result[3] = w;
}

template <class T>
void utf_Quat3dBase<T>::set(const gsl_Matrix& matrix) {
    set(matrix.NewXAxis(), matrix.NewYAxis(), matrix.NewZAxis());
}

template <class T>
void utf_Quat3dBase<T>::set(const gsl_Vector& x, const gsl_Vector& y, const gsl_Vector& z) {
    double matrix[9];
    SetColumn(matrix, 0, x);
    SetColumn(matrix, 1, y);
    SetColumn(matrix, 2, z);
    double quaternion[4];
    utf_getquat(quaternion, matrix);
    for (int i = 0; i < 4; ++i) q[i] = static_cast<T>(quaternion[i]);
}

template <class T>
void utf_Quat3dBase<T>::setIdentity() {
    q[0] = q[1] = q[2] = 0;
    q[3] = 1;
}

template <class T>
void utf_Quat3dBase<T>::toVector(T* result) const {
    const T sineSquared = 1 - q[3] * q[3];
    const T factor = sineSquared == 0 ? T(0) : 2 * std::acos(q[3]) / std::sqrt(sineSquared);
    for (int i = 0; i < 3; ++i) result[i] = factor * q[i];
}

template <class T>
bool utf_Quat3dBase<T>::projectOn(const gsl_Vector& v, unsigned axis, double tol) {
    if (axis > 2) return false;
    double components[4] = {double(q[0]), double(q[1]), double(q[2]), double(q[3])};
    double rows[3][3];
    utf_Quat3dBase<double>(components).cosines(rows);
    gsl_Vector local(rows[axis][0], rows[axis][1], rows[axis][2]);
    local.Normalize();
    if (!(std::fabs(local.DotProduct(v)) <= tol)) return false;
    gsl_Vector projection = local.ProjectOn(gsl_Plane(gsl_Point(), v));
    projection.Normalize();
    set(projection.CrossProduct(v), projection, v);
    return true;
}

template <class T>
void utf_Quat3dBase<T>::Print(aio_ostream& stream, int indent) const {
    stream.Blanks(indent) << "x:\t" << double(q[0]) << "\ty:\t" << double(q[1]) << "\tz:\t"
                          << double(q[2]) << "\tw:\t" << double(q[3]) << "\n";
}

template class utf_Quat3dBase<float>;
template class utf_Quat3dBase<double>;
