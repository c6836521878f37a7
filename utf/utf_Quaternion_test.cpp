#include "utf/utf_Quaternion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <string>

#include "foundation/shared/nex_Exception.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_Vector.h"
#include "utf/utf_QuaternionAdapter.h"
#include "utf/utf_RotationC.h"

namespace {

constexpr double pi = std::numbers::pi;

template <class T>
class utf_QuaternionTyped : public testing::Test {
  public:
    static constexpr double tolerance = sizeof(T) == 4 ? 1e-6 : 1e-14;
    using Rotation = utf_Quaternion<T>;

    static void ExpectSame(const Rotation& a, const Rotation& b) {
        ASSERT_EQ(a.type(), b.type());
        for (int i = 0; i < a.numComponents(); ++i) {
            EXPECT_NEAR(a.Components()[i], b.Components()[i], tolerance) << i;
        }
    }
};
using Numbers = testing::Types<float, double>;
TYPED_TEST_SUITE(utf_QuaternionTyped, Numbers);

TYPED_TEST(utf_QuaternionTyped, AgreesWithTheFlatRoutinesUpToTransposition) {
    using Q = utf_Quaternion<TypeParam>;
    const Q q(TypeParam(0.3), TypeParam(-1.1), TypeParam(2.0));
    double components[4];
    for (int i = 0; i < 4; ++i) components[i] = q.Components()[i];
    double r[9];
    int flag = 0;
    ktsovuutf_quat2rot3d(components, r, &flag);
    TypeParam rows[3][3];
    q.cosines(rows);
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) EXPECT_NEAR(rows[i][j], r[j + 3 * i], this->tolerance);
    }
    this->ExpectSame(Q(res_QUATERNION_3D, q.cosines()), q);
    this->ExpectSame(utf_QuaternionAdapter<TypeParam>(q).Quaternion(), q);
    this->ExpectSame(utf_QuaternionAdapter<TypeParam>(res_QUATERNION_3D,
                                                      utf_QuaternionAdapter<TypeParam>(q).cosines())
                         .Quaternion(),
                     q);
}

TYPED_TEST(utf_QuaternionTyped, ComposesAndInverts) {
    using Q = utf_Quaternion<TypeParam>;
    const Q a(TypeParam(0.3), 0, 0);
    const Q b(0, TypeParam(0.7), 0);
    const Q c(0, 0, TypeParam(-0.4));
    this->ExpectSame(a.mult(b).mult(c), Q(TypeParam(0.3), TypeParam(0.7), TypeParam(-0.4)));
    this->ExpectSame(a.mult(b).mult(b.inverse()), a);

    const TypeParam plane[2] = {TypeParam(std::sin(-0.2)), TypeParam(std::cos(-0.2))};
    const Q planar(res_QUATERNION_2D, plane);
    this->ExpectSame(a.mult(planar), a.mult(c));  // promoted to (0, 0, s, c)
    EXPECT_NEAR(planar.mult(planar).toVector()[1], -0.8, this->tolerance);
    EXPECT_EQ(planar.toVector().numComponents(), 2);
    EXPECT_EQ(planar.toVector()[0], 0);
    const TypeParam notUnit[4] = {TypeParam(0.1), TypeParam(0.2), TypeParam(0.3), TypeParam(0.4)};
    const TypeParam inverted[4] = {-notUnit[0], -notUnit[1], -notUnit[2], notUnit[3]};
    EXPECT_EQ(Q(res_QUATERNION_3D, notUnit).inverse(), Q(res_QUATERNION_3D, inverted));
}

TYPED_TEST(utf_QuaternionTyped, GivesRotationVectors) {
    using Q = utf_Quaternion<TypeParam>;
    const TypeParam identity[4] = {0, 0, 0, 1};
    const TypeParam halfTurn[4] = {0, 0, 1, 0};
    EXPECT_EQ(Q(res_QUATERNION_3D, identity).toVector()[2], 0);
    const utf_Vector<TypeParam> turn = Q(res_QUATERNION_3D, halfTurn).toVector();
    EXPECT_EQ(turn.type(), res_QUATERNION_3D);
    EXPECT_EQ(turn.numComponents(), 4);
    EXPECT_EQ(turn[2], TypeParam(pi));
    EXPECT_EQ(turn[3], 0);
}

TYPED_TEST(utf_QuaternionTyped, ReaimsAFrame) {
    using Q = utf_Quaternion<TypeParam>;
    const gsl_Vector x(0.6, 0.8, 0);
    const gsl_Vector y(-0.8, 0.6, 0);
    const gsl_Vector z(0, 0, 1);
    Q frame(x, y, z);
    const Q same = frame;
    // Local axis 0 is (0.6, 0.8, 0); aimed with the third axis along it, it is refused.
    EXPECT_FALSE(frame.projectOn(Q(y, z, x), 0, 0.5));
    EXPECT_FALSE(frame.projectOn(Q(x, y, z), 3, 10));
    EXPECT_EQ(frame, same);
    ASSERT_TRUE(frame.projectOn(Q(y, z, x), 2, 1e-3));  // v = x, local axis z becomes the second
    this->ExpectSame(frame, Q(z.CrossProduct(x), z, x));

    Q planar(x, y);
    const Q before = planar;
    EXPECT_FALSE(planar.projectOn(Q(y, z, x), 2, 1e-3));  // would leave the plane
    EXPECT_EQ(planar, before);
    ASSERT_TRUE(planar.projectOn(Q(x, y, z), 0, 1e-3));  // axis 0 becomes axis 1: a quarter back
    EXPECT_NEAR(planar.toVector()[1], std::atan2(0.8, 0.6) - pi / 2, this->tolerance);
}

TYPED_TEST(utf_QuaternionTyped, AnswersDegenerateInputHarmlessly) {
    using Q = utf_Quaternion<TypeParam>;
    const gsl_Vector null(0, 0, 0);
    const gsl_Vector e1(1, 0, 0);
    const gsl_Vector e3(0, 0, 1);
    const TypeParam identity[2] = {0, 1};
    EXPECT_EQ(Q(null, e1), Q(res_QUATERNION_2D, identity));
    EXPECT_EQ(Q(e3, e1), Q(res_QUATERNION_2D, identity));
    EXPECT_EQ(Q(e1, gsl_Vector(0, -1, 0), e3), Q(e1, gsl_Vector(0, 1, 0), e3));  // left-handed
    EXPECT_EQ(Q(res_QUATERNION_2D, cow_2DArray<TypeParam>(0, 0)), Q(res_QUATERNION_2D, identity));
    EXPECT_EQ(Q(res_QUATERNION_3D, cow_List<TypeParam>()).Components()[3], 0);
    for (const int code : {0, 5, 8, 12}) {
        const auto type = static_cast<res_DataTypeEnm>(code);
        EXPECT_EQ(Q::numComponents(type), 0);
        try {
            const Q bad(type, static_cast<const TypeParam*>(nullptr));
            FAIL() << code;
        } catch (const nex_PrimException& e) {
            EXPECT_STREQ(e.what(), "Unknown quaternion type");
            EXPECT_NE(std::string(e.File()).find("utf_Quaternion"), std::string::npos);
            EXPECT_GT(e.Line(), 0);
        }
    }
}

TEST(utf_Quaternion, TakesTheRotationOfAMatrixAndCopiesAsItsOwnClass) {
    gsl_Matrix turn;
    turn.AxisRotation(gsl_Vector(0, 0, 2), 0.5);
    const utf_Quaternion<double> spatial(res_QUATERNION_3D, turn);
    const utf_Quaternion<double> planar(res_QUATERNION_2D, turn);
    EXPECT_NEAR(spatial.toVector()[2], 0.5, 1e-15);
    EXPECT_NEAR(planar.toVector()[1], 0.5, 1e-15);
    EXPECT_NEAR(planar.R12_2d(), spatial.R12(), 1e-15);
    const utf_EngineeringData<double>& base = planar;
    const std::unique_ptr<utf_EngineeringData<double>> copy(base.Copy());
    EXPECT_NE(dynamic_cast<utf_Quaternion<double>*>(copy.get()), nullptr);
    EXPECT_EQ(*copy, base);
}

TEST(utf_Quat3dBase, ReaimsInDoubleAndRoundsOnce) {
    for (int i = 0; i < 50; ++i) {
        const utf_Quaternion<float> q(0.1f * static_cast<float>(i), 0.7f, -1.3f);
        float single[4];
        double wide[4];
        for (int k = 0; k < 4; ++k) wide[k] = single[k] = q.Components()[k];
        const gsl_Vector v(0.3, -0.5, 0.8);
        ASSERT_TRUE(utf_Quat3dBase<float>(single).projectOn(v, 1, 10));
        ASSERT_TRUE(utf_Quat3dBase<double>(wide).projectOn(v, 1, 10));
        for (int k = 0; k < 4; ++k) EXPECT_EQ(single[k], static_cast<float>(wide[k])) << i;
    }
}

TEST(utf_Quat2dBase_Kept, CosinesZeroesTheSecondRowAndLeavesTwoElements) {
    double components[2] = {std::sin(0.3), std::cos(0.3)};
    double rows[3][3] = {{7, 7, 7}, {7, 7, 7}, {7, 7, 7}};
    const utf_Quat2dBase<double> view(components);
    view.cosines(rows);
    const double expected[3][3] = {{view.R11_2d(), view.R12_2d(), 0}, {0, 0, 0}, {7, 7, 1}};
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) EXPECT_EQ(rows[i][j], expected[i][j]);
    }
    EXPECT_NEAR(view.R12_2d(), std::sin(0.6), 1e-15);
}

}  // namespace
