#include "gsl/gsl_BBox.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "foundation/coreutils/aio_ostream.h"
#include "g3d/g3d_Sphere.h"
#include "gsl/gsl_BoxMeasures.h"
#include "gsl/gsl_Matrix.h"
#include "testing/test_Random.h"

namespace {

const gsl_BBox empty;
const gsl_BBox unitCube(gsl_Point(0, 0, 0), gsl_Point(1, 1, 1));

gsl_BBox CubeAt(double x, double y, double z, double side = 1) {
    return {gsl_Point(x, y, z), gsl_Point(x + side, y + side, z + side)};
}

/// Equal to the bit, unlike `==` of boxes.
void ExpectCorners(const gsl_BBox& box, const gsl_Point& low, const gsl_Point& high) {
    for (int axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(box.Low()[axis], low[axis]) << axis;
        EXPECT_EQ(box.High()[axis], high[axis]) << axis;
    }
}

/// A box of integer corners, so that lengths and sums are exact.
gsl_BBox IntegerBox(test_Random& random) {
    gsl_BBox box;
    for (int corner = 0; corner < 2; ++corner) {
        box.Add(gsl_Point(random.Below(12), random.Below(12), random.Below(12)));
    }
    return box;
}

TEST(gsl_BBox, AbsorbsEmptyBoxes) {
    gsl_BBox box;
    ExpectCorners(box, gsl_Point(0, 0, 0), gsl_Point(-1, -1, -1));
    EXPECT_EQ(box.Size(), -1.0);
    EXPECT_EQ(box.Diag().Length(), 0.0);
    EXPECT_EQ(box.YLen(), -1.0);
    box.Add(unitCube);
    box.Add(empty);
    const gsl_BBox crossed(gsl_Point(0, 0, 3), gsl_Point(9, 9, 2));
    box.Add(crossed);
    ExpectCorners(box, unitCube.Low(), unitCube.High());
    box.Vacate();
    ExpectCorners(box, empty.Low(), empty.High());
    box = crossed;
    EXPECT_TRUE(box.IsEmpty());
    gsl_Matrix shift;
    shift.SetTranslation(gsl_Vector(1, 1, 1));
    box.Transform(shift);
    ExpectCorners(box, crossed.Low(), crossed.High());
    box.SetLowHigh(box.High(), box.Low());
    ExpectCorners(box, crossed.High(), crossed.Low());
}

TEST(gsl_BBox, GrowsByPointsAndBoxes) {
    gsl_BBox box;
    box.Add(gsl_Point(1, -2, 3));
    EXPECT_EQ(box.Size(), 0.0);
    box.Add(gsl_Point(0, 5, 3));
    ExpectCorners(box, gsl_Point(0, -2, 3), gsl_Point(1, 5, 3));
    box.Add(CubeAt(-1, 0, 2.5));
    ExpectCorners(box, gsl_Point(-1, -2, 2.5), gsl_Point(1, 5, 3.5));
    EXPECT_EQ(gsl_BBox(gsl_Point(1, 1, 1), gsl_Point(3, 4, 7)).Size(), 7.0);
}

TEST(gsl_BBox, CarriesIdentitiesOfPoints) {
    const gsl_Point a(gsl_Point(1, 1, 1), gsl_Point(1, 1, 1));
    const gsl_Point b(gsl_Point(3, 3, 3), gsl_Point(3, 3, 3));
    gsl_BBox box;
    box.Add(a);
    box.Add(b);
    EXPECT_EQ(box.Low().GetUid(), a.GetUid());
    EXPECT_EQ(box.High().GetUid(), a.GetUid());
    box.SetHigh(b);
    gsl_BBox grown;
    grown.Add(box);
    EXPECT_EQ(grown.High().GetUid(), b.GetUid());
    EXPECT_TRUE(box.Center() == gsl_Point(2, 2, 2));
    EXPECT_TRUE(box.Center().GetUid().IsAllocated());
    box.Transform(gsl_Matrix());
    ExpectCorners(box, a, b);
    EXPECT_FALSE(box.Low().GetUid().IsAllocated());
    EXPECT_FALSE(box.High().GetUid().IsAllocated());
}

TEST(gsl_BBox, ContainsWithinItsTolerance) {
    const struct {
        double x;
        bool inside;
    } cases[] = {{-0.5e-10, true}, {-2e-10, false}, {1 + 0.5e-10, true}, {1 + 2e-10, false}};
    for (const auto& c : cases) {
        EXPECT_EQ(unitCube.ContainsPoint(gsl_Point(c.x, 0.5, 1)), c.inside) << c.x;
        EXPECT_EQ(unitCube.ContainsPoint(gsl_Point(0.5, 1, c.x)), c.inside) << c.x;
        gsl_BBox b(gsl_Point(0.5, 0.5, 0.5), gsl_Point(0.5, 0.5, 0.5));
        b.Add(gsl_Point(0.5, c.x, 0.5));
        EXPECT_EQ(unitCube.ContainsBox(b), c.inside) << c.x;
    }
}

TEST(gsl_BBox, IntersectsAndMeasuresGaps) {
    test_Random random(3);
    for (int i = 0; i < 2000; ++i) {
        const gsl_BBox a = IntegerBox(random);
        const gsl_BBox b = IntegerBox(random);
        double squares = 0;
        for (int axis = 0; axis < 3; ++axis) {
            const double gap =
                std::max({0.0, a.Low()[axis] - b.High()[axis], b.Low()[axis] - a.High()[axis]});
            squares += gap * gap;
        }
        ASSERT_EQ(BoxBoxDistance(a, b), std::sqrt(squares));
        ASSERT_EQ(a.Intersect(b), squares == 0);
    }
    EXPECT_EQ(BoxBoxContainment(CubeAt(0.25, 0.25, 0.25, 0.5), unitCube), 0.0);
    EXPECT_EQ(BoxBoxContainment(CubeAt(0, 0, 0, 2), unitCube), 0.5);
}

TEST(gsl_BBox, TransformBoundsTheTransformedCorners) {
    test_Random random(5);
    const auto any = [&random] { return random.Between(-1, 1); };
    for (int i = 0; i < 200; ++i) {
        const gsl_BBox box = IntegerBox(random);
        gsl_Matrix matrix;
        matrix.AxisRotation(gsl_Vector(any(), any(), any()), 3 * any());
        matrix.SetTranslation(gsl_Vector(any(), any(), any()));
        gsl_BBox expected;
        for (int corner = 0; corner < 8; ++corner) {
            gsl_Point p = box.Low();
            for (int axis = 0; axis < 3; ++axis) {
                if (corner >> axis & 1) p[axis] = box.High()[axis];
            }
            matrix.Transform(p);
            expected.Add(p);
        }
        gsl_BBox placed = box;
        placed.Transform(matrix);
        ASSERT_TRUE(placed == expected);
        ASSERT_LE(BoxBoxContainment(expected, placed), 1e-12);
    }
}

TEST(gsl_BBox, MeetsSpheresInSinglePrecision) {
    const g3d_Sphere extent = CubeAt(1, 2, 3, 2).GetExtent();
    EXPECT_EQ(extent.Center(), g3d_Point(2, 3, 4, 1));
    EXPECT_EQ(extent.Radius(), static_cast<float>(std::sqrt(12.0) / 2));
    EXPECT_TRUE(unitCube.SphereContainsBox(g3d_Sphere(g3d_Point(0.5f, 0.5f, 0.5f), 0.867f)));
    // Each corner but one is inside.
    for (int corner = 0; corner < 8; ++corner) {
        const auto side = [corner](int axis) { return corner >> axis & 1 ? 0.4f : 0.6f; };
        const g3d_Sphere sphere(g3d_Point(side(0), side(1), side(2)), 1.0f);
        EXPECT_FALSE(unitCube.SphereContainsBox(sphere)) << corner;
        EXPECT_TRUE(unitCube.SphereContainsBox(g3d_Sphere(sphere.Center(), 1.04f))) << corner;
    }
}

TEST(gsl_BBox, PrintsBothCorners) {
    aio_StringStream stream;
    gsl_BBox(gsl_Point(1, 0.1, -2.5e-7), gsl_Point(4, 5, 6)).Print(stream, 2);
    EXPECT_EQ(stream.Text().View(), "  x:\t1\ty:\t0.1\tz:\t-2.5e-07\n  x:\t4\ty:\t5\tz:\t6\n");
}

TEST(gsl_BBox_Kept, ContainmentIgnoresTheLinearTolerance) {
    const gsl_Point near(1 + 5e-7, 0.5, 0.5);
    EXPECT_TRUE(near == gsl_Point(1, 0.5, 0.5));
    EXPECT_FALSE(unitCube.ContainsPoint(near));
}

TEST(gsl_BBox_Kept, TouchingBoxesAreToldByRoundedLengths) {
    const gsl_BBox a(gsl_Point(0.3, 0, 0), gsl_Point(0.8, 1, 1));
    const gsl_BBox b(gsl_Point(0.8, 0, 0), gsl_Point(0.9, 1, 1));
    EXPECT_FALSE(a.Intersect(b));
}

TEST(gsl_BBox_Kept, ExtentOfAnEmptyBoxHasRadiusMinusOneHalf) {
    EXPECT_EQ(empty.GetExtent().Radius(), -0.5f);
    EXPECT_EQ(empty.GetExtent().Center(), g3d_Point(-0.5f, -0.5f, -0.5f));
}

TEST(gsl_BoxMeasures_Kept, EmptyBoxIsRootThreeAway) {
    EXPECT_EQ(BoxBoxDistance(unitCube, empty), std::sqrt(3.0));
    EXPECT_EQ(BoxBoxDistance(empty, CubeAt(50, 0, 0)), std::sqrt(3.0));
}

TEST(gsl_BoxMeasures_Kept, ContainmentOfAPointDividesByZero) {
    const gsl_BBox inside(gsl_Point(0.5, 0.5, 0.5), gsl_Point(0.5, 0.5, 0.5));
    const gsl_BBox outside(gsl_Point(3, 0, 0), gsl_Point(3, 0, 0));
    EXPECT_TRUE(std::isnan(BoxBoxContainment(inside, unitCube)));
    EXPECT_EQ(BoxBoxContainment(outside, unitCube), std::numeric_limits<double>::infinity());
}

}  // namespace
