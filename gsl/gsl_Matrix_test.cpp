#include "gsl/gsl_Matrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "cow/cow_2DArray.h"
#include "testing/test_Random.h"

namespace {

using std::numbers::pi;

/// Lets a test see and set the entries and the flag.
struct FlaggedMatrix : gsl_Matrix {
    FlaggedMatrix(const gsl_Matrix& matrix) : gsl_Matrix(matrix) {}
    FlaggedMatrix(const cow_2DArray<double>& entries, int flag) { From2DArray(entries, flag); }
    cow_2DArray<double> Entries() const {
        cow_2DArray<double> entries;
        To2DArray(&entries);
        return entries;
    }
    using gsl_Matrix::IdentityFlag;
};

int Flag(const gsl_Matrix& m) { return FlaggedMatrix(m).IdentityFlag(); }

/// The largest difference of two entries.
double Difference(const gsl_Matrix& a, const gsl_Matrix& b) {
    double x[4][4], y[4][4], largest = 0;
    a.AsArray(x);
    b.AsArray(y);
    for (int i = 0; i < 16; ++i) {
        largest = std::fmax(largest, std::fabs(x[i / 4][i % 4] - y[i / 4][i % 4]));
    }
    return largest;
}

gsl_Matrix Translation(double x, double y, double z) {
    gsl_Matrix m;
    m.SetTranslation(gsl_Vector(x, y, z));
    return m;
}

/// A rotation whose flag is unknown.
gsl_Matrix Rotation(const gsl_Vector& axis, double angleRad) {
    gsl_Matrix m;
    m.AxisRotation(gsl_Point(), axis, angleRad);
    return m;
}

gsl_Matrix FromRows(const gsl_Vector& r0, const gsl_Vector& r1, const gsl_Vector& r2) {
    gsl_Matrix m;
    m.SetRow(0, r0);
    m.SetRow(1, r1);
    m.SetRow(2, r2);
    return m;
}

TEST(gsl_Matrix, KeepsItsFlag) {
    gsl_Matrix m;
    EXPECT_EQ(Flag(m), 1);
    EXPECT_EQ(Flag(m.InverseRigidTransform()), 1);
    EXPECT_EQ(Flag(m.GetConcatenated(m)), -1);
    m.SetTranslation(gsl_Vector(0, 0, 0));
    EXPECT_EQ(Flag(m), -1);
    EXPECT_EQ(Flag(m.InverseRigidTransform()), -1);
    EXPECT_TRUE(m.IsIdentity());
    EXPECT_EQ(Flag(m), 1);
    m.SetRow(0, gsl_Vector(1, 0, 0));
    EXPECT_EQ(Flag(m), -1);
    m.FillIdentity();
    EXPECT_EQ(Flag(m), 1);
    m.SetRotationVectors({0, 2, 0}, {0, 0, 3}, {4, 0, 0});
    EXPECT_EQ(Flag(m), -1);
    EXPECT_EQ(Difference(m, FromRows({0, 0, 1}, {1, 0, 0}, {0, 1, 0})), 0);
    m.AxisRotation(gsl_Point(1, 2, 3), gsl_Vector(0, 0, 0), 1);
    EXPECT_EQ(Flag(m), 1);
    EXPECT_EQ(Difference(m, gsl_Matrix()), 0);
    EXPECT_EQ(Flag(Rotation(gsl_Vector(1, 0, 0), 0)), -1);
}

TEST(gsl_Matrix, TestsForIdentityOnceAndRepairs) {
    const gsl_Matrix nearly =
        FromRows({1 + 0.9e-8, 0.9e-8, 0}, {-0.9e-8, 1 - 0.9e-8, 0}, {0, 0, 1});
    EXPECT_TRUE(nearly.IsIdentity());
    EXPECT_EQ(Difference(nearly, gsl_Matrix()), 0);
    const FlaggedMatrix moved = Translation(0, 0, 1.1e-8);
    EXPECT_FALSE(moved.IsIdentity());
    EXPECT_EQ(moved.IdentityFlag(), 0);
    EXPECT_TRUE(FlaggedMatrix(moved.Entries(), 1).IsIdentity()) << "the flag is believed";
    EXPECT_FALSE(FlaggedMatrix(FlaggedMatrix(gsl_Matrix()).Entries(), 0).IsIdentity());
    EXPECT_FALSE(FlaggedMatrix(moved.Entries(), 5).IsIdentity()) << "any other flag is unknown";

    // Row 3 is not looked at, and repaired.
    cow_2DArray<double> entries = FlaggedMatrix(gsl_Matrix()).Entries();
    entries.Get(3, 0) = 5;
    const FlaggedMatrix perspective(entries, -1);
    EXPECT_TRUE(perspective.IsIdentity());
    EXPECT_EQ(Difference(perspective, gsl_Matrix()), 0);
}

TEST(gsl_Matrix, RotatesAndInverts) {
    test_Random random(4711);
    const auto component = [&random] { return random.Between(-5, 5); };
    for (int i = 0; i < 500; ++i) {
        const gsl_Vector axis(component(), component(), component());
        const gsl_Point centre(component(), component(), component());
        gsl_Matrix m;
        m.AxisRotation(centre, axis, random.Between(1e-3, pi - 1e-3));

        gsl_Point fixed = centre + axis;
        fixed.Transform(m);
        EXPECT_LT(fixed.GetDistance(centre + axis), 1e-13);
        gsl_Vector v(component(), component(), component());
        const double length = v.Length();
        v.RotateAndTransform(m);
        EXPECT_NEAR(v.Length(), length, 1e-13);

        gsl_Point translation;
        gsl_Vector found;
        double foundAngle = 0;
        m.GetAxisRotation(translation, found, foundAngle);
        EXPECT_LE(foundAngle, 4 * pi / 3 + 1e-12);
        gsl_Matrix rebuilt = Rotation(found, foundAngle);
        rebuilt.SetTranslation(translation - gsl_Point());
        EXPECT_LT(Difference(rebuilt, m), 1e-13);

        double rx, ry, rz;
        m.GetRotationAngles(rx, ry, rz);
        gsl_Matrix composed = Rotation({1, 0, 0}, rx);
        composed.Concatenate(Rotation({0, 1, 0}, ry));
        composed.Concatenate(Rotation({0, 0, 1}, rz));
        gsl_Vector t;
        m.GetTranslation(t);
        composed.SetTranslation(t);
        EXPECT_LT(Difference(composed, m), 1e-13);
        double a, b, c;
        m.GetEulerianAnglesZYX(a, b, c);
        EXPECT_NEAR(a, rz * 180 / pi, 1e-12);
        EXPECT_NEAR(b, ry * 180 / pi, 1e-12);
        EXPECT_NEAR(c, rx * 180 / pi, 1e-12);

        m.Concatenate(m.InverseRigidTransform());
        EXPECT_LT(Difference(m, gsl_Matrix()), 1e-13);
    }
}

TEST(gsl_Matrix, ConcatenatesAfterItself) {
    gsl_Matrix m = Rotation({0, 0, 1}, pi / 2).GetConcatenated(Translation(10, 0, 0));
    gsl_Point p(1, 0, 0);
    p.Transform(m);
    EXPECT_TRUE(p == gsl_Point(10, 1, 0));
    m.Concatenate(m);
    p = gsl_Point(1, 0, 0);
    m.Transform(p);
    EXPECT_TRUE(p == gsl_Point(9, 10, 0));
    gsl_Vector v(1, 0, 0);
    EXPECT_EQ(v.Length(), 1);
    Translation(1, 2, 3).Transform(v);
    EXPECT_EQ(v.DeltaX(), 1) << "vectors do not move";
    EXPECT_EQ(Translation(1, 2, 3).NewOrigin()[2], 3);
}

TEST(gsl_Matrix, EqualsWithinAThousandth) {
    EXPECT_TRUE(gsl_Matrix() == Translation(0, 0.0009, 0));
    EXPECT_FALSE(gsl_Matrix() == Translation(0, 0, 0.0011));
    EXPECT_FALSE(Translation(NAN, 0, 0) == Translation(NAN, 0, 0));
}

TEST(gsl_Matrix, ExtractsAxesInEveryBranch) {
    const struct {
        gsl_Vector axis;
        double angleRad;
    } cases[] = {{{1, 0, 0}, pi}, {{0, 1, 0}, pi}, {{0, 0, 1}, pi}, {{1, 0, 0}, 1e-8}};
    gsl_Point translation;
    gsl_Vector axis;
    double angle = 1;
    for (const auto& c : cases) {
        // The last entry is the norm: a multiple of a homogeneous matrix is the same rotation.
        for (const double factor : {1.0, 4.0}) {
            cow_2DArray<double> entries = FlaggedMatrix(Rotation(c.axis, c.angleRad)).Entries();
            for (int i = 0; i < 16; ++i) entries.Get(i / 4, i % 4) *= factor;
            FlaggedMatrix(entries, -1).GetAxisRotation(translation, axis, angle);
            EXPECT_NEAR(angle, c.angleRad, 1e-15) << factor;
            EXPECT_LT((axis - c.axis).Length(), 1e-15) << factor;
        }
    }
    Rotation({1, 0, 0}, 1e-11).GetAxisRotation(translation, axis, angle);
    EXPECT_EQ(axis.Length(), 0);
    // Gimbal lock: all of the turn about the vertical is counted about X.
    const gsl_Matrix locked = Rotation({1, 0, 0}, 0.3).GetConcatenated(Rotation({0, 1, 0}, pi / 2));
    double rx, ry, rz;
    locked.GetRotationAngles(rx, ry, rz);
    EXPECT_NEAR(rx, 0.3, 1e-15);
    EXPECT_DOUBLE_EQ(ry, pi / 2);
    EXPECT_EQ(rz, 0);
}

TEST(gsl_Matrix_Kept, AxisRotationLeavesTheIdentityFlag) {
    gsl_Matrix m;
    m.AxisRotation({0, 0, 1}, pi / 2);
    EXPECT_TRUE(m.IsIdentity());
    EXPECT_EQ(Difference(m.InverseRigidTransform(), gsl_Matrix()), 0);
    double a = 1, b = 1, c = 1;
    m.GetEulerianAnglesZYX(a, b, c);
    EXPECT_TRUE(a == 0 && b == 0 && c == 0);
    // Everything else sees the rotation.
    EXPECT_FALSE(m == gsl_Matrix());
    m.GetRotationAngles(a, b, c);
    EXPECT_DOUBLE_EQ(c, pi / 2);
    gsl_Point p(1, 0, 0);
    p.Transform(Translation(1, 0, 0).GetConcatenated(m));
    EXPECT_TRUE(p == gsl_Point(0, 2, 0));
    m.Concatenate(gsl_Matrix());
    EXPECT_FALSE(m.IsIdentity());
}

TEST(gsl_Matrix_Kept, EulerianAngleHasTheWrongSignLookingDown) {
    // Ry(-90) after Rx(30): m00 and m10 are exact zeros.
    const double s = 0.5, k = std::sqrt(0.75);
    const gsl_Matrix up = FromRows({0, s, k}, {0, k, -s}, {-1, 0, 0});
    const gsl_Matrix down = FromRows({0, -s, -k}, {0, k, -s}, {1, 0, 0});
    double a, b, c;
    up.GetEulerianAnglesZYX(a, b, c);
    EXPECT_NEAR(b, 90, 1e-12);
    EXPECT_NEAR(c, 30, 1e-12);
    down.GetEulerianAnglesZYX(a, b, c);
    EXPECT_NEAR(b, -90, 1e-12);
    EXPECT_NEAR(c, -30, 1e-12);
    EXPECT_EQ(a, 0);
}

TEST(gsl_Matrix_Kept, NullRotationVectorBecomesNotANumber) {
    gsl_Matrix m;
    m.SetRotationVectors({0, 0, 0}, {0, 1, 0}, {0, 0, 1});
    EXPECT_TRUE(std::isnan(m.NewXAxis()[0]));
}

}  // namespace
