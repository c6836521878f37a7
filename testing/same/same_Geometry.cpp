// Points, vectors, planes, lines, segments, matrices, boxes and octrees.

#include <numbers>
#include <vector>

#include "g3d/g3d_Sphere.h"
#include "gsl/gsl_BBox.h"
#include "gsl/gsl_BoxMeasures.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_MortonOrder.h"
#include "gsl/gsl_OctreeBBox.h"
#include "gsl/gsl_Plane.h"
#include "gsl/gsl_Segment.h"
#include "gsl/gsl_StLine.h"
#include "testing/same/same_Report.h"

namespace {

constexpr int kRounds = 300;

void Vectors(same_Report& report, const gsl_Point (&p)[4], const gsl_Vector (&v)[3]) {
    const gsl_Vector &a = v[0], &b = v[1], &c = v[2];
    const double squared = a.LengthSq();  // before the length is known
    report.Exact("gsl_Vector", squared, a.Length(), a.UnitX(), a.CrossProduct(b), a.DotProduct(b),
                 a.TripleProduct(b, c), a.NormalizedCopy(), a * 0.1, a.AnyOrthogonalUnit(),
                 gsl_Vector(p[0], p[1], p[2]), a.BestAlignedOrthogonalUnit(),
                 a.ProjectOn(gsl_Plane(p[0], c)), a == b, a.IsOn(b, 1e-3), a.IsParallel(b, 1e-3),
                 a.SameDirection(b, 1e-3), a.IsOrthogonal(b));
    report.Near("gsl_Vector::AngleWith", 0.0, a.AngleWith(b, false));
    report.Near("gsl_Vector::AngleWith-reference", 2 * std::numbers::pi, a.AngleWith(b, false, c));
    double angleRad[2] = {};
    report.Exact("gsl_Vector::AngleBetween", c.AngleBetween(a, b, angleRad[0]),
                 a.CrossProduct(b).AngleBetween(a, b, angleRad[1]));
    report.Near("gsl_Vector::AngleBetween", 0.0, angleRad);
}

void Points(same_Report& report, const gsl_Point (&p)[4], const gsl_Vector (&v)[3]) {
    const gsl_Plane plane(p[1], v[0]);
    const gsl_StLine line(p[1], v[1]);
    const gsl_StLine other(p[1] + v[1] * 0.3, v[2]);
    const gsl_Segment segment(p[1], p[2]);
    gsl_Point closest, foot[3], hit[3];
    double t[3] = {}, w[4][3] = {};
    report.Exact("gsl_Point decisions", p[0] == p[1], p[0].IsOn(p[1]), p[0].IsOn(plane),
                 p[0].IsOn(line), p[0] > p[1], p[0] >= p[1], p[0].ProjectOn(segment, foot[0], t[0]),
                 p[0].ProjectOn(segment, 0.1, foot[1], t[1]),
                 p[0].ProjectOn(p[1], p[2], p[3], foot[2], w[0]), p[0].Bary(p[1], p[2], w[1]),
                 p[0].Bary(p[1], p[2], p[3], w[2]), p[0].RayIntersect(v[0], plane, hit[0]),
                 p[0].RayIntersect(p[1], p[2], gsl_Point(p[1], p[2]) - p[0], hit[1], w[3]),
                 line.Intersect(other, hit[2]));
    report.Exact("gsl_Point distances", p[0].GetDistance(p[1]), p[0].SquaredDistance(p[1]),
                 p[0].GetDistance(p[1], p[2], p[3]), p[0].GetDistance(plane),
                 p[0].GetDistance(plane, v[1]), p[0].GetDistance(line),
                 p[0].GetSignedDistance(plane), p[0].GetDistance(segment, closest));
    report.Exact("gsl_Point feet", closest, foot, t, w, hit, p[0].ProjectOn(plane),
                 p[0].ProjectOn(line, t[2]), gsl_Point(p[0], 0.3, p[1], 0.7),
                 p[0].PointAtDistInDirection(0.7, v[0]));
}

/// A rigid placement made without trigonometric functions.
gsl_Matrix Placement(const gsl_Vector& x, const gsl_Vector& near, const gsl_Vector& translation) {
    const gsl_Vector z = x.CrossProduct(near);
    gsl_Matrix matrix;
    matrix.SetRotationVectors(x, z.CrossProduct(x), z);
    matrix.SetTranslation(translation);
    return matrix;
}

void Matrices(same_Report& report, const gsl_Point& p, const gsl_Vector (&v)[3]) {
    gsl_Matrix placed = Placement(v[0], v[1], v[2]);
    gsl_Matrix back = placed.GetConcatenated(placed.InverseRigidTransform());
    gsl_Point image = p;
    gsl_Vector direction = v[2];
    image.Transform(placed);
    direction.RotateAndTransform(placed);
    report.Exact("gsl_Matrix", placed, placed.InverseRigidTransform(), back, image, direction,
                 back == gsl_Matrix());
    double angles[3], degrees[3], angleRad = 0;
    gsl_Vector axis;
    placed.GetRotationAngles(angles[0], angles[1], angles[2]);
    placed.GetEulerianAnglesZYX(degrees[0], degrees[1], degrees[2]);
    placed.GetAxisRotation(image, axis, angleRad);
    report.Near("gsl_Matrix-angles", 0.0, angles, degrees, angleRad);

    gsl_Matrix turned, about;
    angleRad = 7 * v[2].UnitX();
    turned.AxisRotation(v[0], angleRad);
    about.AxisRotation(p, v[0], angleRad);
    report.Near("gsl_Matrix::AxisRotation", 1.0, turned);
    report.Near("gsl_Matrix::AxisRotation-point", 1 + (p - gsl_Point()).Length(), about);
    report.Exact("gsl_Matrix decisions", back.IsIdentity(), placed.IsIdentity(),
                 turned.IsIdentity(), about.IsIdentity(), about == turned, axis);
}

unsigned CountNodes(const gsl_OctreeBBox& node) {
    unsigned count = 1;
    for (int i = 0; !node.IsLeaf() && i < gsl_OctreeBBox::childCount; ++i) {
        count += CountNodes(node.Child(i));
    }
    return count;
}

}  // namespace

void same_Geometry(same_Report& report) {
    test_Random random(1);
    for (int round = 0; round < kRounds; ++round) {
        gsl_Point p[4];
        gsl_Vector v[3];
        for (gsl_Point& point : p) point = same_Point(random);
        for (gsl_Vector& vector : v) vector = same_Vector(random);
        if (round % 5 == 0) p[0] = p[1] + gsl_Vector(p[1], p[2]) * (random.Below(5) * 0.25);
        if (round % 7 == 0) v[1] = v[0] * same_Coordinate(random);
        Vectors(report, p, v);
        Points(report, p, v);
        Matrices(report, p[0], v);
    }
}

void same_Boxes(same_Report& report) {
    test_Random random(2);
    constexpr unsigned items = 60;
    std::vector<gsl_BBox> boxes;
    for (unsigned i = 0; i < items; ++i) {
        gsl_BBox box;
        const gsl_Point corner = same_Point(random);
        for (int k = random.Below(3); k >= 0; --k) box.Add(corner + same_Vector(random) * 0.2);
        boxes.push_back(box);
    }
    const gsl_Matrix placements[] = {
        Placement(gsl_Vector(1, 2, 2), gsl_Vector(0, 1, 0), gsl_Vector(0.1, -3, 20)),
        Placement(gsl_Vector(0, 0, 1), gsl_Vector(3, 4, 0), gsl_Vector())};
    for (const gsl_BBox& a : boxes) {
        gsl_BBox placed = a;
        placed.Transform(placements[0]);
        report.Exact("gsl_BBox", placed, a.Size(), a.Center(), a.GetExtent().Center(),
                     a.GetExtent().Radius(), a.SphereContainsBox(a.GetExtent()));
        const gsl_BBox& b = boxes[static_cast<std::size_t>(random.Below(items))];
        report.Exact("gsl_BBox pair", BoxBoxDistance(a, b), BoxBoxContainment(a, b), a.Intersect(b),
                     a.ContainsBox(b), a.ContainsPoint(b.Low()), a == b);
    }
    for (const unsigned place : gsl_MortonOrder(boxes.data(), boxes.size())) {
        report.Exact("gsl_MortonOrder", place);
    }

    const gsl_BBox space(gsl_Point(-20, -20, -20), gsl_Point(20, 20, 20));
    gsl_OctreeBBox first(space, &boxes, 10, 0, false), second(space, &boxes, 10, 0, true);
    const auto boxOf = [](void* user, unsigned item, gsl_BBox* box) {
        *box = (*static_cast<const std::vector<gsl_BBox>*>(user))[item];
    };
    for (gsl_OctreeBBox* tree : {&first, &second}) {
        tree->SetCallback(boxOf);
        for (const bool subdivide : {true, false}) {
            for (unsigned i = 0; i < items; ++i) tree->Classify(i, boxes[i], 0.01, subdivide);
        }
    }
    gsl_OctreeBBox::PairTable pairs;
    const bool paired = first.Intersect(second, placements[0], placements[1], pairs, 0.05);
    report.Exact("gsl_OctreeBBox", paired, CountNodes(first), CountNodes(second));
    gsl_OctreeBBox::ForEachPair(
        pairs, [&](unsigned i, unsigned j) { report.Exact("gsl_OctreeBBox pair", i, j); });
    gsl_OctreeBBox::FreePairs(pairs);
}
