#include "gsl/gsl_Matrix.h"

#include <algorithm>
#include <cmath>

#include "cow/cow_2DArray.h"

namespace {

constexpr double kDegreesPerRadian = 57.29577951308232;
/// Half width of the interval in which an entry counts as that of the identity; the bounds around 1
/// are the stated decimals.
constexpr double kIdentityTolerance = 1e-8;
constexpr double kOneLow = 0.99999999;
constexpr double kOneHigh = 1.00000001;
constexpr double kEqualityTolerance = 0.001;
/// 2^-19: below it the Y rotation is taken as a right angle.
constexpr double kGimbalLock = 1.9073486328125e-6;

struct Quaternion {
    double w, x, y, z;
};

/// The quaternion of the rotation block by the largest pivot, m33 standing for its norm.
Quaternion QuaternionOf(const double (&m)[4][4]) noexcept {
    const double trace = m[0][0] + m[1][1] + m[2][2];
    Quaternion q;
    if (trace >= 0) {
        const double s = std::sqrt(trace + m[3][3]);
        const double f = 0.5 / s;
        q = {s / 2, (m[2][1] - m[1][2]) * f, (m[0][2] - m[2][0]) * f, (m[1][0] - m[0][1]) * f};
    } else if (m[2][2] > std::max(m[0][0], m[1][1])) {
        const double s = std::sqrt(m[2][2] - m[0][0] - m[1][1] + m[3][3]);
        const double f = 0.5 / s;
        q = {(m[1][0] - m[0][1]) * f, (m[0][2] + m[2][0]) * f, (m[2][1] + m[1][2]) * f, s / 2};
    } else if (m[1][1] > m[0][0]) {
        const double s = std::sqrt(m[1][1] - m[2][2] - m[0][0] + m[3][3]);
        const double f = 0.5 / s;
        q = {(m[0][2] - m[2][0]) * f, (m[1][0] + m[0][1]) * f, s / 2, (m[2][1] + m[1][2]) * f};
    } else {
        const double s = std::sqrt(m[0][0] - m[2][2] - m[1][1] + m[3][3]);
        const double f = 0.5 / s;
        q = {(m[2][1] - m[1][2]) * f, s / 2, (m[1][0] + m[0][1]) * f, (m[2][0] + m[0][2]) * f};
    }
    if (m[3][3] != 1) {
        const double norm = std::sqrt(m[3][3]);
        q = {q.w / norm, q.x / norm, q.y / norm, q.z / norm};
    }
    return q;
}

bool IsIdentityEntry(double entry, bool diagonal) noexcept {
    return diagonal ? entry >= kOneLow && entry <= kOneHigh
                    : entry >= -kIdentityTolerance && entry <= kIdentityTolerance;
}

}  // namespace

void axRot(const gsl_Vector& axis, double length, double angleRad, double block[4][4]) noexcept {
    const double ux = axis.DeltaX() / length;
    const double uy = axis.DeltaY() / length;
    const double uz = axis.DeltaZ() / length;
    const double c = std::cos(angleRad);
    const double s = std::sin(angleRad);
    block[0][0] = (1 - ux * ux) * c + ux * ux;
    block[1][1] = (1 - uy * uy) * c + uy * uy;
    block[2][2] = (1 - uz * uz) * c + uz * uz;
    block[0][1] = ux * uy * (1 - c) - s * uz;
    block[1][0] = ux * uy * (1 - c) + s * uz;
    block[0][2] = ux * uz * (1 - c) + s * uy;
    block[2][0] = ux * uz * (1 - c) - s * uy;
    block[1][2] = uy * uz * (1 - c) - s * ux;
    block[2][1] = uy * uz * (1 - c) + s * ux;
}

void gsl_Matrix::FillIdentity() noexcept { *this = gsl_Matrix(); }

bool gsl_Matrix::IsIdentity() const noexcept {
    if (identityFlag == kIdentity || identityFlag == kNotIdentity) return identityFlag == kIdentity;
    identityFlag = kNotIdentity;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column) {
            if (!IsIdentityEntry(m[row][column], row == column)) return false;
        }
    }
    const gsl_Matrix exact;
    exact.AsArray(m);
    identityFlag = kIdentity;
    return true;
}

void gsl_Matrix::AxisRotation(const gsl_Vector& axis, double angleRad) {
    FillIdentity();
    if (axis.Length() >= gsl_Util::Instance().LinTol()) axRot(axis, axis.Length(), angleRad, m);
}

void gsl_Matrix::AxisRotation(const gsl_Point& point, const gsl_Vector& axis, double angleRad) {
    FillIdentity();
    if (!(axis.Length() >= gsl_Util::Instance().LinTol())) return;
    const gsl_Vector toPoint(point.GetX(), point.GetY(), point.GetZ());
    gsl_Matrix rotation;
    axRot(axis, axis.Length(), angleRad, rotation.m);
    gsl_Matrix back;
    back.SetTranslation(toPoint);
    SetTranslation(toPoint.ScaledCopy(-1));
    Concatenate(rotation);
    Concatenate(back);
}

gsl_Matrix gsl_Matrix::GetConcatenated(const gsl_Matrix& next) const noexcept {
    gsl_Matrix product;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            double sum = 0;
            for (int k = 0; k < 4; ++k) sum += next.m[row][k] * m[k][column];
            product.m[row][column] = sum;
        }
    }
    product.identityFlag = kUnknown;
    return product;
}

gsl_Matrix gsl_Matrix::InverseRigidTransform() const noexcept {
    gsl_Matrix inverse;
    if (identityFlag == kIdentity) return inverse;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) inverse.m[row][column] = m[column][row];
        inverse.m[row][3] = -(m[0][row] * m[0][3] + m[1][row] * m[1][3] + m[2][row] * m[2][3]);
    }
    inverse.identityFlag = kUnknown;
    return inverse;
}

void gsl_Matrix::GetAxisRotation(gsl_Point& translation, gsl_Vector& axis, double& angleRad) const {
    const Quaternion q = QuaternionOf(m);
    const double sine = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z);
    angleRad = 2 * std::atan2(sine, q.w);
    axis = angleRad > gsl_Util::Instance().AngTol() ? gsl_Vector(q.x / sine, q.y / sine, q.z / sine)
                                                    : gsl_Vector(0, 0, 0);
    translation = NewOrigin();
}

void gsl_Matrix::GetEulerianAnglesZYX(double& aDeg, double& bDeg, double& cDeg) const noexcept {
    double a = 0;
    double b = 0;
    double c = 0;
    if (identityFlag != kIdentity) {
        if (m[0][0] == 0 && m[1][0] == 0) {
            b = -std::asin(m[2][0]);
            c = std::atan2(m[0][1], m[1][1]);
        } else {
            a = std::atan2(m[1][0], m[0][0]);
            b = std::atan2(-m[2][0], std::sqrt(m[1][0] * m[1][0] + m[0][0] * m[0][0]));
            c = std::atan2(m[2][1], m[2][2]);
        }
    }
    aDeg = a * kDegreesPerRadian;
    bDeg = b * kDegreesPerRadian;
    cDeg = c * kDegreesPerRadian;
}

void gsl_Matrix::GetRotationAngles(double& rxRad, double& ryRad, double& rzRad) const noexcept {
    const double cosineY = std::sqrt(m[0][0] * m[0][0] + m[1][0] * m[1][0]);
    ryRad = std::atan2(-m[2][0], cosineY);
    if (cosineY > kGimbalLock) {
        rxRad = std::atan2(m[2][1], m[2][2]);
        rzRad = std::atan2(m[1][0], m[0][0]);
    } else {
        rxRad = std::atan2(-m[1][2], m[1][1]);
        rzRad = 0;
    }
}

void gsl_Matrix::AsArray(double array[4][4]) const noexcept {
    for (int row = 0; row < 4; ++row) std::copy_n(m[row], 4, array[row]);
}

void gsl_Matrix::SetRow(int index, const gsl_Vector& v) noexcept {
    for (int column = 0; column < 3; ++column) m[index][column] = v[column];
    identityFlag = kUnknown;
}

void gsl_Matrix::SetColumn(int index, const gsl_Vector& v) noexcept {
    for (int row = 0; row < 3; ++row) m[row][index] = v[row];
    identityFlag = kUnknown;
}

void gsl_Matrix::SetRotationVectors(const gsl_Vector& vx, const gsl_Vector& vy,
                                    const gsl_Vector& vz) noexcept {
    const gsl_Vector* const columns[] = {&vx, &vy, &vz};
    for (int column = 0; column < 3; ++column) {
        const double length = columns[column]->Length();
        for (int row = 0; row < 3; ++row) m[row][column] = (*columns[column])[row] / length;
    }
    identityFlag = kUnknown;
}

bool gsl_Matrix::operator==(const gsl_Matrix& other) const noexcept {
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            const double difference = std::fabs(m[row][column] - other.m[row][column]);
            if (!(difference <= kEqualityTolerance)) return false;
        }
    }
    return true;
}

void gsl_Matrix::From2DArray(cow_2DArray<double> array, int flag) {
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) m[row][column] = array.ConstGet(row, column);
    }
    identityFlag = flag;
}

void gsl_Matrix::To2DArray(cow_2DArray<double>* array) const {
    *array = cow_2DArray<double>(4, 4);
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) array->Get(row, column) = m[row][column];
    }
}
