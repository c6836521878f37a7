// Quaternions, rotation matrices and the flat routines.

#include <algorithm>

#include "testing/same/same_Report.h"
#include "utf/utf_ArrayC.h"
#include "utf/utf_Quaternion.h"
#include "utf/utf_RotationC.h"

namespace {

constexpr int kRounds = 300;

/// Components that are a rotation in every second round.
void Fill(double (&q)[4], test_Random& random, bool unit) {
    for (double& component : q) component = random.Between(-1, 1);
    const double norm = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
    if (unit) std::for_each(q, q + 4, [norm](double& component) { component /= norm; });
}

template <class T>
void Quaternions(same_Report& report, const double (&q)[4], const gsl_Vector (&v)[3]) {
    T components[4], rows[3][3];
    std::transform(q, q + 4, components,
                   [](double component) { return static_cast<T>(component); });
    const utf_Quaternion<T> a(res_QUATERNION_3D, components);
    const utf_Quaternion<T> flat(res_QUATERNION_2D, components);
    const utf_Quaternion<T> frame(v[0], v[1], v[2]);
    utf_Quaternion<T> aimed = a;
    const bool aims = aimed.projectOn(frame, 1, 0.5);
    a.cosines(rows);
    report.Exact("utf_Quaternion", rows, a.mult(frame), a.inverse(), frame, aims, aimed);
    report.Near("utf_Quaternion::toVector", T(0), a.toVector(), flat.toVector());
    report.Near("utf_Quaternion-of-angles", T(1), utf_Quaternion<T>(v[0], v[1]),
                utf_Quaternion<T>(3 * components[0], 3 * components[1], 3 * components[2]));
}

void FlatRoutines(same_Report& report, const double (&q)[4], const gsl_Vector (&v)[3], int round) {
    double rotation[9], turned[9], quaternion[2][4], tensor[9] = {}, rotated[9];
    const double tol = 1e-6;
    const int scalarFirst = round % 2, code = 21, components = 7, six = 6;
    int flag, direct = 3;
    ktsovuutf_quat2rot3d(q, rotation, &flag);
    utf_calquat(quaternion[0], rotation, &scalarFirst);
    for (int i = 0; i < 9; ++i) turned[i] = i % 2 ? -rotation[i] : rotation[i];
    utf_getquat(quaternion[1], turned);
    for (int i = 0; i < 6; ++i) tensor[i] = v[i / 3][i % 3];
    utf_quatrot(tensor, q, rotated, &six);
    report.Exact("utf flat routines", rotation, flag, quaternion, turned, rotated);
    double principal[7], values[3], directions[9];
    const int three = 3, selector = 1;
    utf_sprind(tensor, values, directions, &selector, &three, &three);
    utf_calprinquat(tensor, principal, &code, &components, &direct, &three);
    report.Exact("utf principal values", values, directions, principal);
    const double vector[3] = {7 * v[2].UnitX(), 7 * v[2].UnitY(), v[2].UnitZ()};
    ktsovu_rotmatfromrotvect(turned, vector, &tol);
    report.Near("ktsovu_rotmatfromrotvect", 1.0, turned);
}

}  // namespace

void same_Rotations(same_Report& report) {
    test_Random random(3);
    for (int round = 0; round < kRounds; ++round) {
        double q[4];
        Fill(q, random, round % 2 == 0);
        const gsl_Vector v[3]{same_Vector(random), same_Vector(random), same_Vector(random)};
        Quaternions<double>(report, q, v);
        Quaternions<float>(report, q, v);
        FlatRoutines(report, q, v, round);
    }
}
