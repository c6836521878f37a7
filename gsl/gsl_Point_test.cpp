#include "gsl/gsl_Point.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <type_traits>

#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_Plane.h"
#include "gsl/gsl_Segment.h"
#include "gsl/gsl_StLine.h"

namespace {

static_assert(std::is_trivially_destructible_v<gsl_Point>);
static_assert(std::is_nothrow_move_constructible_v<gsl_Point>);

using testing::DoubleEq;
using testing::ElementsAre;
using testing::Pointwise;

constexpr double kTol = 1e-6;
const gsl_Vector kNull(0, 0, 0);
const gsl_Plane kPlane(gsl_Point(0, 0, 1), gsl_Vector(0, 0, 2));
const gsl_StLine kLine(gsl_Point(0, 0, 0), gsl_Vector(2, 0, 0));
/// Along X from 0 to 4.
const gsl_Segment kSegment(gsl_Point(gsl_Point(0, 0, 0), gsl_Point(0, 0, 0)),
                           gsl_Point(gsl_Point(4, 0, 0), gsl_Point(4, 0, 0)));

/// Equal to the bit, unlike `==` of points.
void ExpectAt(const gsl_Point& p, double x, double y, double z) {
    EXPECT_THAT((std::array{p.GetX(), p.GetY(), p.GetZ()}), ElementsAre(x, y, z));
}

TEST(gsl_Point, HandlesIdentities) {
    const gsl_Point a(2, 4, 6);
    EXPECT_FALSE(a.GetUid().IsAllocated());
    gsl_Point middle(a, gsl_Point(4, 8, 12));
    ExpectAt(middle, 3, 6, 9);
    const gsl_Point sum(a, 2, gsl_Point(1, 1, 1), -1);
    ExpectAt(sum, 3, 7, 11);
    EXPECT_EQ(gsl_Point(sum).GetUid(), sum.GetUid());
    EXPECT_FALSE((sum + gsl_Vector(1, 0, 0)).GetUid().IsAllocated());
    const cls_Uid before = middle.GetUid();
    EXPECT_TRUE(before.IsAllocated());
    EXPECT_NE(before, sum.GetUid());
    middle.SetPos(sum);
    ExpectAt(middle, 3, 7, 11);
    EXPECT_EQ(middle.GetUid(), before);
    middle = a;
    EXPECT_FALSE(middle.GetUid().IsAllocated());
    middle[0] = -1;
    middle[7] = -3;
    ExpectAt(middle, -1, 4, -3);
    EXPECT_EQ(sum[1], 7);
    EXPECT_EQ(gsl_Point::TypeId(), 50987009u);
}

TEST(gsl_Point, ComparesByItsTolerances) {
    const gsl_Point origin;
    const gsl_Point edge(kTol, 0, 0);
    EXPECT_TRUE(origin == edge) << "the bound belongs to ==";
    double squared = 0;
    EXPECT_FALSE(origin.IsOn(edge, squared)) << "the bound does not belong to IsOn";
    EXPECT_EQ(squared, kTol * kTol);
    EXPECT_TRUE(origin.IsOn(gsl_Point(0.999e-6, 0, 0)));
    EXPECT_TRUE(origin != gsl_Point(1.001e-6, 0, 0));
    const gsl_Point unknown(NAN, 0, 0);
    EXPECT_TRUE(unknown == unknown);

    EXPECT_TRUE(gsl_Point(1, 1, 1) > origin);
    EXPECT_FALSE(gsl_Point(1, 1, 0) > origin);
    EXPECT_TRUE(gsl_Point(1, 1, 0) >= origin);
    EXPECT_FALSE(gsl_Point(1, 1, -1) >= origin);
    EXPECT_TRUE(unknown >= unknown);
}

TEST(gsl_Point, MeasuresPlanesAndLines) {
    const gsl_Point p(3, 4, -2);
    EXPECT_EQ(p.GetSignedDistance(kPlane), -3);
    EXPECT_EQ(p.GetDistance(kPlane), 3);
    EXPECT_EQ(p.GetDistance(kPlane, gsl_Vector(0, 0, -5)), -3);
    EXPECT_DOUBLE_EQ(p.GetDistance(kPlane, gsl_Vector(1, 0, 1)), 3 * std::sqrt(2.0));
    EXPECT_EQ(p.GetDistance(gsl_Point(0, 0, 1), gsl_Point(1, 0, 1), gsl_Point(0, 1, 1)), 3);
    EXPECT_DOUBLE_EQ(p.GetDistance(kLine), std::sqrt(20.0));
    EXPECT_TRUE(gsl_Point(5, 5, 1 + 0.9e-6).IsOn(kPlane));
    EXPECT_FALSE(gsl_Point(5, 5, 1 + 1.1e-6).IsOn(kPlane));
    EXPECT_TRUE(gsl_Point(5, kTol, 0).IsOn(kLine));
    EXPECT_FALSE(gsl_Point(5, 1.1e-6, 0).IsOn(kLine));
    ExpectAt(p.ProjectOn(kPlane), 3, 4, 1);
    double t = 0;
    ExpectAt(p.ProjectOn(kLine, t), 3, 0, 0);
    EXPECT_EQ(t, 3);
    ExpectAt(p.PointAtDistInDirection(2, gsl_Vector(0, 5, 0)), 3, 6, -2);
    ExpectAt(p.PointAtDistInDirection(2, gsl_Vector(0, 0, 0)), 3, 4, -2);
}

TEST(gsl_Point, FindsTheClosestPointOfASegment) {
    const gsl_Point& start = kSegment.GetStart();
    const gsl_Point& end = kSegment.GetEnd();
    const struct {
        double x;
        gsl_Point closest;
        bool projects;
    } cases[] = {{1, {1, 0, 0}, true},
                 {-0.5 * kTol, {-0.5 * kTol, 0, 0}, true},
                 {4 + 0.5 * kTol, {4 + 0.5 * kTol, 0, 0}, true},
                 {-2 * kTol, start, false},
                 {4 + 2 * kTol, end, false},
                 {-7, start, false},
                 {9, end, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.x);
        const gsl_Point p(c.x, 3, 0);
        gsl_Point closest;
        const double distance = p.GetDistance(kSegment, closest);
        EXPECT_EQ(distance, p.GetDistance(closest));
        EXPECT_NEAR(closest.GetX(), c.closest.GetX(), 1e-15);
        EXPECT_EQ(closest.GetUid(), c.closest.GetUid());
        gsl_Point foot;
        double t = 0;
        EXPECT_EQ(p.ProjectOn(kSegment, foot, t), c.projects);
        EXPECT_DOUBLE_EQ(t, c.x / 4);
        EXPECT_NEAR(foot.GetX(), c.x, 1e-15);
        EXPECT_TRUE(p.ProjectOn(kSegment, c.projects ? 0.6e-6 : 10.0, foot, t));
    }
    gsl_Point foot;
    double t = 1;
    gsl_Point p(9, 9, 9);
    EXPECT_TRUE(p.ProjectOn(kSegment, 5.0, foot, t)) << "shorter than the caller's tolerance";
    ExpectAt(foot, 9, 9, 9);
    EXPECT_EQ(t, 0);
    EXPECT_FALSE(p.ProjectOn(kSegment, 4.0, foot, t));
    p = gsl_Point(1, 2, 0);
    EXPECT_EQ(p.GetDistance(kSegment, p), 2) << "the output may be the point itself";
    ExpectAt(p, 1, 0, 0);
}

TEST(gsl_Point, HasBarycentricWeights) {
    const gsl_Point a(0, 0, 0), b(4, 0, 0), c(0, 4, 0);
    const struct {
        gsl_Point p;
        double w[3];
        bool inside;
    } cases[] = {
        {{0, 0, 0}, {1, 0, 0}, true},         {{4, 0, 0}, {0, 1, 0}, true},
        {{0, 4, 0}, {0, 0, 1}, true},         {{1, 1, 0}, {0.5, 0.25, 0.25}, true},
        {{1, 1, 5}, {0.5, 0.25, 0.25}, true}, {{-1, 1, 0}, {1, -0.25, 0.25}, false},
        {{4, 4, 0}, {-1, 1, 1}, false},       {{-0x1p-20, 4, 0}, {0x1p-22, -0x1p-22, 1}, false},
    };
    for (const auto& k : cases) {
        double w[3];
        EXPECT_EQ(k.p.Bary(a, b, c, w), k.inside);
        EXPECT_THAT(w, Pointwise(DoubleEq(), k.w));
        gsl_Point foot;
        EXPECT_EQ((k.p + gsl_Vector(0, 0, 2)).ProjectOn(a, b, c, foot, w), k.inside);
        ExpectAt(foot, k.p.GetX(), k.p.GetY(), 0);
        EXPECT_THAT(w, Pointwise(DoubleEq(), k.w));
    }
    double w[2] = {7, 7};
    EXPECT_FALSE(gsl_Point(1, 0, 0).Bary(a, a, w));
    EXPECT_EQ(w[0], 7);
    EXPECT_TRUE(gsl_Point(kTol, 0, 0).Bary(a, a, w));
    EXPECT_THAT(w, ElementsAre(0, 1));
    EXPECT_TRUE(gsl_Point(4 + 0.5e-6, 9, 0).Bary(a, b, w));
    EXPECT_FALSE(gsl_Point(4 + 2e-6, 0, 0).Bary(a, b, w));
    EXPECT_LT(w[1], 0) << "the weights are there all the same";
}

TEST(gsl_Point, MeetsSegmentsAndPlanesAlongARay) {
    const gsl_Point p(gsl_Point(1, 3, 0), gsl_Point(1, 3, 0));
    const gsl_Point start = kSegment.GetStart(), end = kSegment.GetEnd();
    gsl_Point hit;
    double w[2];
    EXPECT_TRUE(p.RayIntersect(start, end, gsl_Vector(0, 5, 0), hit, w)) << "a full line";
    ExpectAt(hit, 1, 0, 0);
    EXPECT_DOUBLE_EQ(w[0], 0.25);
    EXPECT_FALSE(p.RayIntersect(start, end, gsl_Vector(-1, -1, 0), hit, w));
    ExpectAt(hit, -2, 0, 0);
    for (const gsl_Vector& missing : {gsl_Vector(1, 0, 0), gsl_Vector(0, 0, 1), kNull}) {
        EXPECT_FALSE(p.RayIntersect(start, end, missing, hit, w));
    }
    EXPECT_FALSE(p.RayIntersect(start, start, gsl_Vector(0, 1, 0), hit, w));

    EXPECT_TRUE(p.RayIntersect(gsl_Vector(1, 0, -1), kPlane, hit));
    ExpectAt(hit, 0, 3, 1);
    EXPECT_FALSE(hit.GetUid().IsAllocated());
    for (const gsl_Vector& missing : {gsl_Vector(1, 0, 0), gsl_Vector(0, 0, 1e-7)}) {
        EXPECT_FALSE(p.RayIntersect(missing, kPlane, hit));
        EXPECT_EQ(hit.GetUid(), p.GetUid());
        hit = gsl_Point();
    }
    const gsl_Point on(gsl_Point(5, 5, 1), gsl_Point(5, 5, 1));
    EXPECT_TRUE(on.RayIntersect(gsl_Vector(1, 0, 0), kPlane, hit)) << "even along the plane";
    EXPECT_EQ(hit.GetUid(), on.GetUid());
}

TEST(gsl_StLine, MeetsLinesWithinTheTolerance) {
    const gsl_Vector along(0, 3, 0);
    gsl_Point hit(9, 9, 9);
    EXPECT_TRUE(kLine.Intersect(gsl_StLine(gsl_Point(7, -2, kTol), along), hit));
    ExpectAt(hit, 7, 0, 0);
    hit = gsl_Point(9, 9, 9);
    EXPECT_FALSE(kLine.Intersect(gsl_StLine(gsl_Point(7, -2, 1.1e-6), along), hit));
    EXPECT_FALSE(kLine.Intersect(kLine, hit));
    EXPECT_FALSE(kLine.Intersect(gsl_StLine(gsl_Point(), gsl_Vector(1, 1e-11, 0)), hit));
    ExpectAt(hit, 9, 9, 9);
}

TEST(gsl_Matrix, MovesPlanesLinesAndSegments) {
    gsl_Matrix turned;
    turned.AxisRotation(gsl_Vector(0, 1, 0), std::numbers::pi / 2);
    turned.SetTranslation(gsl_Vector(0, 5, 0));
    gsl_Plane plane = kPlane;
    plane.Transform(turned);
    EXPECT_TRUE(plane == gsl_Plane(gsl_Point(1, 5, 0), gsl_Vector(2, 0, 0)));
    gsl_StLine line = kLine;
    line.Transform(turned);
    EXPECT_TRUE(line == gsl_StLine(gsl_Point(0, 5, 0), gsl_Vector(0, 0, -2)));
    gsl_Segment segment = kSegment;
    segment.Transform(turned);
    EXPECT_TRUE(segment == gsl_Segment(gsl_Point(0, 5, 0), gsl_Point(0, 5, -4)));
}

TEST(gsl_Point_Kept, DistanceAlongAParallelDirectionIsNotRefused) {
    EXPECT_EQ(gsl_Point(0, 0, 4).GetDistance(kPlane, gsl_Vector(1, 0, 0)), INFINITY);
}

TEST(gsl_Point_Kept, DistanceToADegenerateSegmentIsZero) {
    gsl_Point closest{gsl_Point(), gsl_Point()};
    const cls_Uid uid = closest.GetUid();
    EXPECT_EQ(gsl_Point(5, 6, 7).GetDistance(gsl_Segment(), closest), 0);
    ExpectAt(closest, 5, 6, 7);
    EXPECT_EQ(closest.GetUid(), uid);
}

TEST(gsl_Point_Kept, PlaneWithANullNormalIsNotRefused) {
    const gsl_Plane nowhere(gsl_Point(), kNull);
    const gsl_Point p(3, 4, -2);
    EXPECT_TRUE(std::isnan(p.GetSignedDistance(nowhere)));
    EXPECT_TRUE(std::isnan(p.ProjectOn(nowhere).GetX()));
    gsl_Point hit;
    EXPECT_TRUE(p.RayIntersect(gsl_Vector(1, 0, 0), nowhere, hit));
    EXPECT_TRUE(std::isnan(hit.GetX()));
}

TEST(gsl_Point_Kept, TwoPointWeightsAreSwapped) {
    const gsl_Point p0(1, 0, 0), p1(5, 0, 0);
    double w[2];
    EXPECT_TRUE(p0.Bary(p0, p1, w));
    EXPECT_THAT(w, ElementsAre(0, 1));
    EXPECT_TRUE(p1.Bary(p0, p1, w));
    EXPECT_THAT(w, ElementsAre(1, 0));
}

TEST(gsl_Point_Kept, DegenerateTriangleAnswersTrueWithoutFiniteWeights) {
    double w[3];
    EXPECT_TRUE(gsl_Point(9, 9, 9).Bary({0, 0, 0}, {1, 1, 1}, {2, 2, 2}, w));
    for (const double weight : w) EXPECT_FALSE(std::isfinite(weight));
}

}  // namespace
