#include "gsl/gsl_Vector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "foundation/coreutils/aio_ostream.h"
#include "gsl/gsl_Plane.h"
#include "gsl/gsl_Point.h"
#include "testing/test_Random.h"

namespace {

using std::numbers::pi;

const gsl_Vector kX(1, 0, 0);
const gsl_Vector kY(0, 1, 0);
const gsl_Vector kZ(0, 0, 1);
const gsl_Vector kNull(0, 0, 0);

/// Lets a test see and set the length cache.
struct CachedVector : gsl_Vector {
    CachedVector(const gsl_Vector& v) : gsl_Vector(v) {}
    CachedVector(double dx, double dy, double dz, double length) {
        FromCoordinates(dx, dy, dz, length);
    }
    using gsl_Vector::CachedLength;
    using gsl_Vector::ToCoordinates;
};

double Cache(const gsl_Vector& v) { return CachedVector(v).CachedLength(); }

void ExpectComponents(const gsl_Vector& v, double x, double y, double z, double tol = 0) {
    EXPECT_NEAR(v.DeltaX(), x, tol);
    EXPECT_NEAR(v.DeltaY(), y, tol);
    EXPECT_NEAR(v.DeltaZ(), z, tol);
}

TEST(gsl_Vector, KeepsItsLengthCacheTrue) {
    gsl_Vector v(3, 4, 0);
    EXPECT_EQ(v.LengthSq(), 25);
    v.Scale(2);
    EXPECT_EQ(Cache(v), -1) << "nobody asked for the length";
    EXPECT_EQ(v.Length(), 10);
    v.Scale(-0.5);
    ExpectComponents(v, -3, -4, 0);
    v.Negate();
    ExpectComponents(v, 3, 4, 0);
    EXPECT_EQ(Cache(v), 5);
    for (const gsl_Vector& made : {v + v, v - v, v * 2, v.ScaledCopy(2), v.CrossProduct(kX),
                                   v.NormalizedCopy(), kNull.NormalizedCopy(), v.ProjectOn({})}) {
        EXPECT_EQ(Cache(made), -1);
    }
    EXPECT_TRUE(v.Normalize());
    EXPECT_EQ(Cache(v), 1);

    CachedVector trusted(3, 4, 0, 7);
    EXPECT_EQ(trusted.LengthSq(), 49);
    double x, y, z, length;
    trusted.ToCoordinates(x, y, z, length);
    EXPECT_EQ(length, 7);
    EXPECT_EQ(CachedVector(3, 4, 0, NAN).Length(), 5);
}

TEST(gsl_Vector, LeavesShortVectorsUnnormalised) {
    gsl_Vector v(0.5e-6, 0, 0);
    EXPECT_FALSE(v.Normalize());
    ExpectComponents(v, 0.5e-6, 0, 0);
    ExpectComponents(v.NormalizedCopy(), 0, 0, 0);
    EXPECT_EQ(v.UnitX(), 1);
    EXPECT_TRUE(v.Normalize(1e-7));
    ExpectComponents(v, 1, 0, 0);
    EXPECT_EQ(kNull.UnitY(), 0);
    EXPECT_TRUE(gsl_Vector(1e-6, 0, 0).Normalize());
}

TEST(gsl_Vector, ComparesByItsTolerances) {
    EXPECT_TRUE(kX == gsl_Vector(1, 0.9e-6, 0));
    EXPECT_FALSE(kNull == gsl_Vector(1e-6, 0, 0)) << "the bound is strict";
    const struct {
        gsl_Vector a, b;
        bool isOn, parallel, same, orthogonal;
    } cases[] = {
        {kX, kX * 3, true, true, true, false},
        {kX, kX * -3, true, true, false, false},
        {kX, kY, false, false, false, true},
        {kX, gsl_Vector(1, 1e-4, 0), true, true, true, false},
        {kX, gsl_Vector(1e-11, 1, 0), false, false, false, true},
        {kX, gsl_Vector(1e-9, 1, 0), false, false, false, false},
        {kNull, kNull, false, true, true, false},
        {kX, kNull, false, false, false, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.a.IsOn(c.b, 1e-3), c.isOn);
        EXPECT_EQ(c.a.IsParallel(c.b, 1e-3), c.parallel);
        EXPECT_EQ(c.a.SameDirection(c.b, 1e-3), c.same);
        EXPECT_EQ(c.a.IsOrthogonal(c.b), c.orthogonal);
    }
}

TEST(gsl_Vector, IsTheNormalOfATriangle) {
    const gsl_Vector normal(gsl_Point(0, 0, 5), gsl_Point(3, 0, 5), gsl_Point(0, 3, 5));
    ExpectComponents(normal, 0, 0, 1, 1e-15);
    EXPECT_EQ(Cache(normal), 9 * (1.0 / 9));
    const gsl_Vector degenerate(gsl_Point(0, 0, 0), gsl_Point(1, 1, 1), gsl_Point(2, 2, 2));
    ExpectComponents(degenerate, 0, 0, 0);
    EXPECT_EQ(Cache(degenerate), 0);
    const gsl_Vector coincident(gsl_Point(1, 2, 3), gsl_Point(1, 2, 3), gsl_Point(1, 2, 3));
    EXPECT_EQ(Cache(coincident), 0);
}

TEST(gsl_Vector, MeasuresAngles) {
    EXPECT_DOUBLE_EQ(kX.AngleWith(gsl_Vector(3, 3, 0), false), pi / 4);
    EXPECT_EQ(kX.AngleWith(kX * -5, false), pi);
    EXPECT_EQ(kX.AngleWith(kX * 1e-6, false), pi / 2) << "the bound is too short";
    EXPECT_EQ((kX * 1e-6).AngleWith(kX, false), pi / 2);
    EXPECT_EQ(kX.AngleWith(kX * 2, true), 0) << "cosines beyond 1 are cut";
    EXPECT_DOUBLE_EQ(kX.AngleWith(gsl_Vector(0, -2, 0), false, kZ), 3 * pi / 2);
    EXPECT_DOUBLE_EQ(kX.AngleWith(gsl_Vector(0, -2, 0), false, kZ * -1), pi / 2);

    double angle = 7;
    EXPECT_FALSE(kZ.AngleBetween(kNull, kX, angle));
    EXPECT_FALSE(kZ.AngleBetween(kX, gsl_Vector(1, 0, 1), angle));
    EXPECT_EQ(angle, 7);
    const auto about3Z = [&angle](const gsl_Vector& a, const gsl_Vector& b) {
        return (kZ * 3).AngleBetween(a, b, angle) ? angle : NAN;
    };
    EXPECT_NEAR(about3Z(kX, kY * 4), pi / 2, 1e-15);
    EXPECT_NEAR(about3Z(kY, kX), -pi / 2, 1e-15);
    EXPECT_EQ(about3Z(kX, kX), 0);
    EXPECT_NEAR(about3Z(gsl_Vector(1, 0, 1), gsl_Vector(1, -1, std::sqrt(2.0))), -pi / 4, 1e-15);
}

TEST(gsl_Vector, FindsOrthogonalDirections) {
    const double h = 1 / std::sqrt(2.0);
    ExpectComponents(gsl_Vector(1, 1, 1).AnyOrthogonalUnit(), h, -h, 0, 1e-15);
    ExpectComponents(kNull.AnyOrthogonalUnit(), h, -h, 0, 1e-15);
    test_Random random(20240117);
    const auto component = [&random] { return random.Between(-10, 10); };
    for (int i = 0; i < 200; ++i) {
        const gsl_Vector v(component(), component(), component());
        const gsl_Vector any = v.AnyOrthogonalUnit();
        EXPECT_EQ(Cache(any), 1);
        EXPECT_NEAR(any.DotProduct(any), 1, 1e-14);
        EXPECT_NEAR(any.DotProduct(v), 0, 1e-13);
        EXPECT_NEAR(v.BestAlignedOrthogonalUnit().DotProduct(v), 0, 1e-9);
    }
    ExpectComponents(kX.BestAlignedOrthogonalUnit(), 0, 1, 0);
    ExpectComponents(gsl_Vector(0, 0.6, 0.8).BestAlignedOrthogonalUnit(), 1, 0, 0, 1e-15);
    ExpectComponents(gsl_Vector(1, 2, 3).ProjectOn(gsl_Plane(gsl_Point(9, 9, 9), kZ * 5)), 1, 2, 0);
    ExpectComponents(gsl_Vector(1, 2, 3).ProjectOn(gsl_Plane(gsl_Point(), kNull)), 1, 2, 3);
}

TEST(gsl_Vector, Prints) {
    aio_StringStream stream;
    gsl_Vector(3, 4, 0.1).ProjectOn(gsl_Plane()).Print(stream, 2);
    EXPECT_EQ(stream.Text(), "  magnitude:\t5\n  x:\t3\ty:\t4\tz:\t0\n");
}

TEST(gsl_Vector_Kept, DefaultIsTheUnitZAxis) {
    ExpectComponents(gsl_Vector(), 0, 0, 1);
    EXPECT_EQ(Cache(gsl_Vector()), 1);
}

TEST(gsl_Vector_Kept, AngleAboutAReferenceReachesTwoPi) {
    EXPECT_EQ(kX.AngleWith(gsl_Vector(1, -1e-9, 0), false, kZ), 2 * pi);
}

TEST(gsl_Vector_Kept, AnyOrthogonalUnitOfAShortVectorIsFixed) {
    const gsl_Vector v(1e-7, 0, 0);
    EXPECT_NEAR(v.AnyOrthogonalUnit().DotProduct(kX), 1 / std::sqrt(2.0), 1e-15);
}

TEST(gsl_Vector_Kept, BestAlignedOrthogonalUnitIsNotRescaled) {
    const gsl_Vector best = gsl_Vector(0, 0, 2).BestAlignedOrthogonalUnit();
    ExpectComponents(best, 4, 0, 0);
    EXPECT_EQ(Cache(best), -1);
}

}  // namespace
