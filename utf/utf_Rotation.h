#pragma once

#include <cmath>

/// Inline forms of the flat rotation routines (utf_RotationC.h) for C++ code that converts many
/// rotations: the same bits without the call. Arrays as there: 3 x 3 matrices are nine doubles in
/// column-major order, quaternions (x, y, z, w).

/// The quaternion `q` (4) of the rotation matrix `r` (9), as `utf_calquat` with the vector part
/// first. Answers 0, or the number of the error that `utf_calquat` would report for a matrix that
/// is far from a rotation.
[[gnu::always_inline]] inline int utf_QuaternionOfRotation(double* q, const double* r) {
    const double t = r[0] + r[4] + r[8];
    const double pivot[4] = {t, r[0], r[4], r[8]};
    unsigned largest = r[4] >= r[0] ? 2 : 1;
    largest = r[8] >= pivot[largest] ? 3 : largest;
    if (t >= pivot[largest]) {
        const double w = 0.5 * std::sqrt(t + 1);
        const double d = 4 * w;
        q[0] = (r[5] - r[7]) / d;
        q[1] = (r[6] - r[2]) / d;
        q[2] = (r[1] - r[3]) / d;
        q[3] = w;
        return t <= -1 ? 1 : 0;
    }
    // The three other cases are one, with the axes taken in cyclic order from the largest.
    const unsigned i = largest - 1;
    const unsigned j = largest % 3;
    const unsigned k = (largest + 1) % 3;
    const double square = 0.5 * pivot[largest] + 0.25 * (1 - t);
    const double component = std::sqrt(square);
    const double d = 4 * component;
    q[i] = component;
    q[j] = (r[j + 3 * i] + r[i + 3 * j]) / d;
    q[k] = (r[k + 3 * i] + r[i + 3 * k]) / d;
    q[3] = (r[k + 3 * j] - r[j + 3 * k]) / d;
    return square < 0 ? 3 : 0;
}

/// The matrix `r` (9) of the quaternion `q` (4) as given, as `ktsovuutf_quat2rot3d` without its
/// flag.
[[gnu::always_inline]] inline void utf_RotationOfQuaternion(double* r, const double* q) {
    const double x = q[0], y = q[1], z = q[2], w = q[3];
    const double a = 2 * (w * w) - 1;
    r[0] = 2 * (x * x) + a;
    r[1] = 2 * (x * y + w * z);
    r[2] = 2 * (x * z - w * y);
    r[3] = 2 * (x * y - w * z);
    r[4] = 2 * (y * y) + a;
    r[5] = 2 * (y * z + w * x);
    r[6] = 2 * (x * z + w * y);
    r[7] = 2 * (y * z - w * x);
    r[8] = 2 * (z * z) + a;
}
