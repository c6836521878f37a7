// Points, vectors, matrices, quaternions, the flat routines of rotations, and boxes.

#include <numbers>

#include "g3d/g3d_Sphere.h"
#include "gsl/gsl_BBox.h"
#include "gsl/gsl_BoxMeasures.h"
#include "gsl/gsl_MortonOrder.h"
#include "gsl/gsl_Plane.h"
#include "gsl/gsl_Segment.h"
#include "gsl/gsl_StLine.h"
#include "testing/same/same_Report.h"
#include "utf/utf_ArrayC.h"
#include "utf/utf_Quaternion.h"
#include "utf/utf_RotationC.h"

namespace {

void Vectors(same_Report& report, const gsl_Point& p, const gsl_Vector (&v)[3]) {
    const gsl_Vector &a = v[0], &b = v[1], &c = v[2];
    const double squared = a.LengthSq();  // before the length is known
    double angleRad = 0;
    report.Print("exact gsl_Vector", squared, a.Length(), a.UnitX(), a.CrossProduct(b),
                 a.DotProduct(b), a.TripleProduct(b, c), a.AnyOrthogonalUnit(),
                 a.BestAlignedOrthogonalUnit(), a.ProjectOn(gsl_Plane(p, c)), a == b,
                 a.IsOn(b, 1e-3), a.IsParallel(b, 1e-3), a.SameDirection(b, 1e-3),
                 a.IsOrthogonal(b), c.AngleBetween(a, b, angleRad));
    report.Print("near gsl_Vector::angle", 0.0, a.AngleWith(b, false), angleRad);
    report.Print("near gsl_Vector::turn", 2 * std::numbers::pi, a.AngleWith(b, false, c));
}

void Points(same_Report& report, const gsl_Point (&p)[4], const gsl_Vector (&v)[3]) {
    const gsl_Point &a = p[0], &b = p[1], &c = p[2], &d = p[3];
    const gsl_Plane plane(b, v[0]);
    const gsl_StLine line(b, v[1]);
    const gsl_Segment segment(b, c);
    gsl_Point closest, foot[3], hit[3];
    double t[3] = {}, w[4][3] = {};
    report.Print("exact gsl_Point decisions", a == b, a.IsOn(b), a.IsOn(plane), a.IsOn(line), a > b,
                 a.ProjectOn(segment, foot[0], t[0]), a.ProjectOn(segment, 0.1, foot[1], t[1]),
                 a.ProjectOn(b, c, d, foot[2], w[0]), a.Bary(b, c, w[1]), a.Bary(b, c, d, w[2]),
                 a.RayIntersect(v[0], plane, hit[0]),
                 a.RayIntersect(b, c, gsl_Point(b, c) - a, hit[1], w[3]),
                 line.Intersect(gsl_StLine(b + v[1] * 0.3, v[2]), hit[2]));
    report.Print("exact gsl_Point", a.GetDistance(b), a.GetDistance(b, c, d),
                 a.GetSignedDistance(plane), a.GetDistance(plane, v[1]), a.GetDistance(line),
                 a.GetDistance(segment, closest), closest, foot, w, hit, a.ProjectOn(plane),
                 a.ProjectOn(line, t[2]), t);
}

void Matrices(same_Report& report, gsl_Point p, const gsl_Vector (&v)[3]) {
    const gsl_Vector z = v[0].CrossProduct(v[1]);
    gsl_Matrix placed, turned;
    placed.SetRotationVectors(v[0], z.CrossProduct(v[0]), z);
    placed.SetTranslation(v[2]);
    const gsl_Matrix back = placed.GetConcatenated(placed.InverseRigidTransform());
    turned.AxisRotation(p, v[0], 7 * v[2].UnitX());
    report.Print("near gsl_Matrix::AxisRotation", 1 + (p - gsl_Point()).Length(), turned);
    gsl_Vector axis;
    double angles[7];
    placed.GetRotationAngles(angles[0], angles[1], angles[2]);
    placed.GetEulerianAnglesZYX(angles[3], angles[4], angles[5]);
    placed.GetAxisRotation(p, axis, angles[6]);
    report.Print("near gsl_Matrix::angles", 0.0, angles);
    p.Transform(placed);
    report.Print("exact gsl_Matrix", placed, back, p, axis, back == gsl_Matrix(), back.IsIdentity(),
                 placed.IsIdentity(), turned.IsIdentity());
}

template <class T>
void Quaternions(same_Report& report, const double (&q)[4], const gsl_Vector (&v)[3]) {
    T components[4], rows[3][3];
    for (int i = 0; i < 4; ++i) components[i] = static_cast<T>(q[i]);
    const utf_Quaternion<T> a(res_QUATERNION_3D, components);
    const utf_Quaternion<T> frame(v[0], v[1], v[2]);
    utf_Quaternion<T> aimed = a;
    const bool aims = aimed.projectOn(frame, 1, 0.5);
    a.cosines(rows);
    report.Print("exact utf_Quaternion", rows, a.mult(frame), a.inverse(), frame, aims, aimed);
    report.Print("near utf_Quaternion::toVector", T(0), a.toVector(),
                 utf_Quaternion<T>(res_QUATERNION_2D, components).toVector());
    report.Print("near utf_Quaternion::angles", T(1), utf_Quaternion<T>(v[0], v[1]),
                 utf_Quaternion<T>(3 * components[0], 3 * components[1], 3 * components[2]));
}

void FlatRoutines(same_Report& report, const double (&q)[4], const gsl_Vector (&v)[3], int round) {
    double rotation[9], turned[9], quaternion[4], tensor[9] = {}, rotated[9], principal[7];
    double values[3], directions[9];
    const int scalarFirst = round % 2, code = 21, components = 7, six = 6, three = 3, selector = 1;
    int flag, direct = 3;
    ktsovuutf_quat2rot3d(q, rotation, &flag);
    utf_calquat(quaternion, rotation, &scalarFirst);
    for (int i = 0; i < 6; ++i) tensor[i] = v[i / 3][i % 3];
    utf_quatrot(tensor, q, rotated, &six);
    utf_sprind(tensor, values, directions, &selector, &three, &three);
    utf_calprinquat(tensor, principal, &code, &components, &direct, &three);
    report.Print("exact utf", rotation, flag, quaternion, rotated, values, directions, principal);
    const double vector[] = {7 * v[2].UnitX(), 7 * v[2].UnitY(), v[2].UnitZ()}, tol = 1e-6;
    ktsovu_rotmatfromrotvect(turned, vector, &tol);
    report.Print("near ktsovu_rotmatfromrotvect", 1.0, turned);
}

void Boxes(same_Report& report, test_Random& random) {
    gsl_BBox boxes[60];
    for (gsl_BBox& box : boxes) {
        const gsl_Point corner = same_Point(random);
        for (int k = random.Below(3); k >= 0; --k) box.Add(corner + same_Vector(random) * 0.2);
    }
    gsl_Matrix placement;
    placement.SetRotationVectors({1, 2, 2}, {2, 1, -2}, {-2, 2, -1});
    for (const unsigned place : gsl_MortonOrder(boxes, std::size(boxes))) {
        const gsl_BBox &a = boxes[place], &b = boxes[random.Below(60)];
        gsl_BBox placed = a;
        placed.Transform(placement);
        report.Print("exact gsl_BBox", place, placed.Low(), placed.High(), a.Size(), a.Center(),
                     a.GetExtent().Center(), a.GetExtent().Radius(),
                     a.SphereContainsBox(a.GetExtent()), BoxBoxDistance(a, b),
                     BoxBoxContainment(a, b), a.Intersect(b), a.ContainsBox(b),
                     a.ContainsPoint(b.Low()), a == b);
    }
}

}  // namespace

void same_Geometry(same_Report& report) {
    test_Random random(1);
    for (int round = 0; round < 300; ++round) {
        gsl_Point p[4];
        gsl_Vector v[3];
        double q[4], norm = 1;
        for (gsl_Point& point : p) point = same_Point(random);
        for (gsl_Vector& vector : v) vector = same_Vector(random);
        for (double& component : q) component = random.Between(-1, 1);
        if (round % 2 == 0) norm = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
        for (double& component : q) component /= norm;
        if (round % 5 == 0) p[0] = p[1] + gsl_Vector(p[1], p[2]) * (random.Below(5) * 0.25);
        if (round % 7 == 0) v[1] = v[0] * same_Coordinate(random);
        Vectors(report, p[0], v);
        Points(report, p, v);
        Matrices(report, p[0], v);
        Quaternions<double>(report, q, v);
        Quaternions<float>(report, q, v);
        FlatRoutines(report, q, v, round);
    }
    Boxes(report, random);
}
