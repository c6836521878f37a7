#include "utf/utf_Quat2dBase.h"

#include <cmath>

#include "foundation/coreutils/aio_ostream.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_Util.h"
#include "gsl/gsl_Vector.h"
#include "utf/utf_Quat3dBase.h"

template <class T>
void utf_Quat2dBase<T>::cosines(T (*const rows)[3]) const {
    rows[0][0] = R11_2d();
    rows[0][1] = R12_2d();
    rows[0][2] = 0;
    rows[1][0] = rows[1][1] = rows[1][2] = 0;
    rows[2][2] = 1;
}

template <class T>
void utf_Quat2dBase<T>::inverse(T* result) const {
    result[0] = -q[0];
    result[1] = q[1];
}

template <class T>
void utf_Quat2dBase<T>::mult(const T* p, T* result) const {
    const T s = q[1] * p[0] + q[0] * p[1];
    const T c = q[1] * p[1] - q[0] * p[0];
    result[0] = s;
    result[1] = c;
}

template <class T>
void utf_Quat2dBase<T>::set(const gsl_Matrix& matrix) {
    double rxRad = 0;
    double ryRad = 0;
    double rzRad = 0;
    matrix.GetRotationAngles(rxRad, ryRad, rzRad);
    q[0] = static_cast<T>(std::sin(rzRad / 2));
    q[1] = static_cast<T>(std::cos(rzRad / 2));
}

template <class T>
void utf_Quat2dBase<T>::set(const gsl_Vector& a, const gsl_Vector& b) {
    gsl_Matrix frame;
    frame.SetRotationVectors(a, b, gsl_Vector(0, 0, 1));
    set(frame);
}

template <class T>
void utf_Quat2dBase<T>::setIdentity() {
    q[0] = 0;
    q[1] = 1;
}

template <class T>
void utf_Quat2dBase<T>::toVector(T* result) const {
    result[0] = 0;
    result[1] = 2 * std::asin(q[0]);
}

template <class T>
bool utf_Quat2dBase<T>::projectOn(const gsl_Vector& v, unsigned axis, double tol) {
    double spatial[4] = {0, 0, double(q[0]), double(q[1])};
    if (!utf_Quat3dBase<double>(spatial).projectOn(v, axis, tol)) return false;
    const double limit = omi_Singleton<gsl_Util>::Instance().AngTol();
    if (!(std::fabs(spatial[0]) <= limit && std::fabs(spatial[1]) <= limit)) return false;
    q[0] = static_cast<T>(spatial[2]);
    q[1] = static_cast<T>(spatial[3]);
    return true;
}

template <class T>
void utf_Quat2dBase<T>::Print(aio_ostream& stream, int indent) const {
    stream.Blanks(indent) << "s:\t" << double(q[0]) << "\tc:\t" << double(q[1]) << "\n";
}

template class utf_Quat2dBase<float>;
template class utf_Quat2dBase<double>;
