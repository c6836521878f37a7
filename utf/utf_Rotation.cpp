#include "utf/utf_Rotation.h"

#include <cmath>
#include <cstdio>

#include "foundation/basicutils/KTSBasOmniSSELevel.h"
#include "utf/utf_ArrayC.h"
#include "utf/utf_RotationC.h"

#if defined(__x86_64__)
#define UTF_HAS_AVX2_BUILD 1
#else
#define UTF_HAS_AVX2_BUILD 0
#endif

namespace {

constexpr int three = 3;

int QuaternionOfGeneric(double* q, const double* r) { return utf_QuaternionOfRotation(q, r); }

#if UTF_HAS_AVX2_BUILD
[[gnu::target("avx2")]] int QuaternionOfAvx2(double* q, const double* r) {
    return utf_QuaternionOfRotation(q, r);
}
#endif

/// One of the two builds, as the processor and its set level allow.
int QuaternionOf(double* q, const double* r) {
#if UTF_HAS_AVX2_BUILD
    if (KTSBasOmniMayUse(KTSBAS_CPU_AVX2)) return QuaternionOfAvx2(q, r);
#endif
    return QuaternionOfGeneric(q, r);
}

/// True when the norm of `q` differs from 1 by more than 0.01. Most quaternions are told by the
/// squared norm, without the root.
bool IsFarFromUnit(const double* q) {
    const double normSquared = q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3];
    if (normSquared > 0.981 && normSquared < 1.020) return false;
    return std::fabs(std::sqrt(normSquared) - 1) > 0.01;
}

/// Selector of `utf_sprind` for an element code.
int SelectorOf(int code) {
    if (code > 1000) code /= 1000;
    return (code >= 21 && code <= 25) || (code >= 88 && code <= 91) ? 2 : 1;
}

}  // namespace

void ktsovuutf_quat2rot3d(const double* q, double* r, int* flag) {
    *flag = IsFarFromUnit(q) ? 1 : 0;
    utf_RotationOfQuaternion(r, q);
}

void ktsovu_rotmatfromrotvect(double* r, const double* v, const double* tol) {
    const double x = v[0], y = v[1], z = v[2];
    const double theta = std::sqrt(x * x + y * y + z * z);
    if (*tol >= theta) {
        for (int i = 0; i < 9; ++i) r[i] = i % 4 == 0 ? 1 : 0;
        return;
    }
    const double c = std::cos(theta);
    const double k = std::sin(theta) / theta;
    const double f = (1 - c) / (theta * theta);
    r[0] = c + f * (x * x);
    r[1] = k * z + f * (x * y);
    r[2] = -k * y + f * (x * z);
    r[3] = -k * z + f * (x * y);
    r[4] = c + f * (y * y);
    r[5] = k * x + f * (y * z);
    r[6] = k * y + f * (x * z);
    r[7] = -k * x + f * (y * z);
    r[8] = c + f * (z * z);
}

void utf_calquat(double* q, const double* r, const int* scalarFirst) {
    double vectorFirst[4];
    const int error = QuaternionOf(vectorFirst, r);
    if (error != 0) std::printf("SYSTEM ERROR %d IN CALQUAT\n", error);
    const int shift = *scalarFirst != 0 ? 1 : 0;
    for (int i = 0; i < 4; ++i) q[(i + shift) % 4] = vectorFirst[i];
}

void utf_getquat(double* q, double* r) {
    double e[3];
    utf_axprd(r, r + 3, e);
    if (e[0] * r[6] + e[1] * r[7] + e[2] * r[8] < 0) {
        for (int i = 3; i < 6; ++i) r[i] = -r[i];
    }
    const int vectorFirst = 0;
    utf_calquat(q, r, &vectorFirst);
}

void utf_quatrot(const double* t, const double* q, double* out, const int* n) {
    const bool spatial = *n == 6;
    const double q1 = spatial ? q[0] : 0;
    const double q2 = spatial ? q[1] : 0;
    const double q3 = spatial ? q[2] : q[0];
    const double q4 = spatial ? q[3] : q[1];
    const double a[9] = {2 * (q1 * q1 + q2 * q2 - 0.5), 2 * (q2 * q3 - q1 * q4),
                         2 * (q2 * q4 + q1 * q3),       2 * (q2 * q3 + q1 * q4),
                         2 * (q1 * q1 + q3 * q3 - 0.5), 2 * (q3 * q4 - q1 * q2),
                         2 * (q2 * q4 - q1 * q3),       2 * (q3 * q4 + q1 * q2),
                         2 * (q1 * q1 + q4 * q4 - 0.5)};
    const double s[9] = {t[0], t[3], t[4], t[3], t[1], t[5], t[4], t[5], t[2]};
    double w[9];
    double transposed[9];
    utf_aprd(s, a, w, &three, &three, &three);
    utf_atra(a, transposed, &three, &three);
    utf_aprd(transposed, w, out, &three, &three, &three);
}

void utf_calprinquat(double* t, double* out, const int* code, const int* ncomp, int* ndi,
                     const int* nshr) {
    if (*ncomp == 9 && *ndi == 1 && *nshr == 1) {
        t[2] = t[1];
        t[1] = 0;
        *ndi = 2;
    }
    const int selector = SelectorOf(*code);
    double rows[9];
    double columns[9];
    utf_sprind(t, out, rows, &selector, ndi, nshr);
    utf_atra(rows, columns, &three, &three);
    if (*ndi > 1) utf_asortd(out, columns, ndi);
    double normal[3];
    utf_axprd(columns, columns + 3, normal);
    if (normal[0] * columns[6] + normal[1] * columns[7] + normal[2] * columns[8] < 0) {
        for (int i = 3; i < 6; ++i) columns[i] = -columns[i];
    }
    const int vectorFirst = 0;
    utf_calquat(out + 3, columns, &vectorFirst);
    if (*ncomp < 7 || *ncomp > 9) {
        out[3] = out[5];
        out[4] = out[6];
        out[5] = 0;
        out[6] = 0;
    }
}
