#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "testing/test_Environment.h"
#include "utf/utf_ArrayC.h"
#include "utf/utf_RotationC.h"

namespace {

using Quaternion = std::array<double, 4>;
using Matrix = std::array<double, 9>;
constexpr double half = 0.70710678118654752440;
const int three = 3;

Quaternion FromMatrix(const Matrix& r, int scalarFirst = 0) {
    Quaternion q{};
    utf_calquat(q.data(), r.data(), &scalarFirst);
    return q;
}

Matrix ToMatrix(const Quaternion& q, int* flag = nullptr) {
    Matrix r{};
    int ignored = 0;
    ktsovuutf_quat2rot3d(q.data(), r.data(), flag ? flag : &ignored);
    return r;
}

Matrix Product(const Matrix& a, const Matrix& b) {
    Matrix c{};
    utf_aprd(a.data(), b.data(), c.data(), &three, &three, &three);
    return c;
}

template <std::size_t n>
double Distance(const std::array<double, n>& a, const std::array<double, n>& b) {
    double largest = 0;
    for (std::size_t i = 0; i < n; ++i) largest = std::max(largest, std::fabs(a[i] - b[i]));
    return largest;
}

class RandomRotations {
  public:
    double Uniform() { return static_cast<double>(engine() >> 11) * 0x1p-52 - 1; }
    Quaternion Next() {
        for (;;) {
            Quaternion q{Uniform(), Uniform(), Uniform(), Uniform()};
            const double norm = std::hypot(std::hypot(q[0], q[1]), std::hypot(q[2], q[3]));
            if (norm < 0.1 || norm > 1) continue;
            for (double& component : q) component /= norm;
            return q;
        }
    }

  private:
    std::mt19937_64 engine{20240501};
};

TEST(utf_calquat, GivesExactQuaternionsOfQuarterAndHalfTurns) {
    const struct {
        Matrix r;
        Quaternion q;
    } cases[] = {
        {{1, 0, 0, 0, 1, 0, 0, 0, 1}, {0, 0, 0, 1}},
        {{1, 0, 0, 0, -1, 0, 0, 0, -1}, {1, 0, 0, 0}},
        {{-1, 0, 0, 0, 1, 0, 0, 0, -1}, {0, 1, 0, 0}},
        {{-1, 0, 0, 0, -1, 0, 0, 0, 1}, {0, 0, 1, 0}},
        {{-1, 0, 0, 0, 0, 1, 0, 1, 0}, {0, half, half, 0}},  // ties go to the higher index
        {{0, 0, 1, 0, -1, 0, 1, 0, 0}, {half, 0, half, 0}},
        {{0, 1, 0, 1, 0, 0, 0, 0, -1}, {half, half, 0, 0}},
        {{0, 1, 0, -1, 0, 0, 0, 0, 1}, {0, 0, half, half}},  // trace ties with R(3,3) and wins
        {{0, 1, 0, 0, 0, 1, 1, 0, 0}, {0.5, 0.5, 0.5, 0.5}},
    };
    for (const auto& c : cases) {
        const Quaternion q = FromMatrix(c.r);
        EXPECT_LE(Distance(q, c.q), 2e-16) << q[0] << ' ' << q[1] << ' ' << q[2] << ' ' << q[3];
        EXPECT_LE(Distance(ToMatrix(q), c.r), 4e-16);
        const Quaternion scalarFirst = FromMatrix(c.r, -7);
        EXPECT_EQ(scalarFirst, (Quaternion{q[3], q[0], q[1], q[2]}));
    }
}

TEST(utf_calquat, InvertsQuat2rotAndIsTheSameInBothBuilds) {
    std::vector<Quaternion> results[2];
    for (const bool wide : {false, true}) {
        const test_SseLevel forced(wide ? "AVX2" : "NONE");
        RandomRotations random;
        for (int i = 0; i < 20000; ++i) {
            const Quaternion q = random.Next();
            const Quaternion back = results[wide].emplace_back(FromMatrix(ToMatrix(q)));
            Quaternion negated = back;
            for (double& component : negated) component = -component;
            ASSERT_LE(std::min(Distance(back, q), Distance(negated, q)), 1e-15);
        }
    }
    EXPECT_EQ(results[0], results[1]);
}

TEST(utf_calquat, ReportsAMatrixWithoutRotationOnStandardOutput) {
    const double inf = std::numeric_limits<double>::infinity();
    testing::internal::CaptureStdout();
    const Quaternion q = FromMatrix({-inf, 0, 0, 0, -inf, 0, 0, 0, -inf});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "SYSTEM ERROR 1 IN CALQUAT\n");
    EXPECT_TRUE(std::isnan(q[3]));
}

TEST(utf_getquat, RepairsALeftHandedMatrixInPlace) {
    Matrix r{1, 0, 0, 0, -1, 0, 0, 0, 1};
    Quaternion q{};
    utf_getquat(q.data(), r.data());
    EXPECT_EQ(q, (Quaternion{0, 0, 0, 1}));
    EXPECT_EQ(r, (Matrix{1, 0, 0, 0, 1, 0, 0, 0, 1}));
}

TEST(ktsovuutf_quat2rot3d, FlagsANormThatIsOffByMoreThanOnePercent) {
    int flag = -1;
    const Matrix r = ToMatrix({0, 0, 0, 1.02}, &flag);
    EXPECT_EQ(flag, 1);
    const double diagonal = 2 * (1.02 * 1.02) - 1;
    EXPECT_EQ(r, (Matrix{diagonal, 0, 0, 0, diagonal, 0, 0, 0, diagonal}));
    ToMatrix({0, 0, 0, 0.995}, &flag);
    EXPECT_EQ(flag, 0);
    ToMatrix({0, 0, 0, 0.98}, &flag);
    EXPECT_EQ(flag, 1);
}

TEST(ktsovu_rotmatfromrotvect, IsTheRotationOfTheQuaternionAboveTheTolerance) {
    const Matrix identity{1, 0, 0, 0, 1, 0, 0, 0, 1};
    const double limit = 5;
    const double v[3] = {0, 3, 4};
    Matrix r{};
    ktsovu_rotmatfromrotvect(r.data(), v, &limit);
    EXPECT_EQ(r, identity);
    RandomRotations random;
    for (int i = 0; i < 2000; ++i) {
        const Quaternion q = random.Next();
        const double sine = std::hypot(std::hypot(q[0], q[1]), q[2]);
        const double angle = 2 * std::atan2(sine, q[3]);
        const double vector[3] = {q[0] / sine * angle, q[1] / sine * angle, q[2] / sine * angle};
        const double tiny = 1e-12;
        ktsovu_rotmatfromrotvect(r.data(), vector, &tiny);
        ASSERT_LE(Distance(r, ToMatrix(q)), 4e-15);
    }
}

TEST(utf_RotationC_Kept, QuatrotReadsTheScalarFirst) {
    const double tensor[6] = {1, 2, 3, 4, 5, 6};
    const int spatial = 6;
    const int plane = 4;
    Matrix out{};
    const double storedIdentity[4] = {0, 0, 0, 1};
    utf_quatrot(tensor, storedIdentity, out.data(), &spatial);
    EXPECT_EQ(out, (Matrix{1, 4, -5, 4, 2, -6, -5, -6, 3}));
    const double scalarFirstIdentity[4] = {1, 0, 0, 0};
    utf_quatrot(tensor, scalarFirstIdentity, out.data(), &spatial);
    EXPECT_EQ(out, (Matrix{1, 4, 5, 4, 2, 6, 5, 6, 3}));
    const double quarter[2] = {half, half};  // mixes axes 2 and 3: (0, 0, s, c) with scalar 0
    utf_quatrot(tensor, quarter, out.data(), &plane);
    EXPECT_LE(Distance(out, Matrix{1, -5, -4, -5, 3, 6, -4, 6, 2}), 1e-14);
}

TEST(utf_RotationC_Kept, TwoSquareDiagonalDiffersForUnnormalisedQuaternions) {
    const Matrix r = ToMatrix({1, 1, 0, 1});
    EXPECT_EQ(r[0], 3.0);  // four squares give 1
    EXPECT_EQ(r[8], 1.0);  // four squares give -1
}

/// S is the sum of value_k d_k^T d_k, and the rows d_k are orthonormal.
void ExpectReconstructed(const double* tensor, const double* values, const Matrix& rows,
                         double scale) {
    const Matrix s{tensor[0], tensor[3], tensor[4], tensor[3], tensor[1],
                   tensor[5], tensor[4], tensor[5], tensor[2]};
    Matrix scaled = rows;
    for (std::size_t i = 0; i < 9; ++i) scaled[i] *= values[i % 3];
    Matrix transposed{};
    utf_atra(rows.data(), transposed.data(), &three, &three);
    ASSERT_LE(Distance(Product(transposed, scaled), s), 8e-16 * scale);
    ASSERT_LE(Distance(Product(transposed, rows), Matrix{1, 0, 0, 0, 1, 0, 0, 0, 1}), 2e-15);
}

TEST(utf_sprind, RebuildsTensorsOfEverySizeAndDegeneracy) {
    RandomRotations random;
    const int selector = 1;
    for (const double scale : {1e-300, 1e-12, 1.0, 1e12, 1e300}) {
        for (int i = 0; i < 500; ++i) {
            double tensor[6];
            for (double& t : tensor) t = scale * random.Uniform();
            if (i % 5 == 1) tensor[1] = tensor[0];
            if (i % 5 == 2)
                tensor[1] = tensor[2] = tensor[0], tensor[3] = tensor[4] = tensor[5] = 0;
            if (i % 5 == 3) tensor[3] *= 1e-9, tensor[4] *= 1e-16, tensor[5] = 0;
            if (i % 5 == 4) tensor[0] *= 1e-12, tensor[1] *= 1e-6, tensor[3] *= 1e-9;
            double values[3];
            Matrix rows{};
            utf_sprind(tensor, values, rows.data(), &selector, &three, &three);
            ExpectReconstructed(tensor, values, rows, 3 * scale);
        }
    }
    const double bad[6] = {1, std::numeric_limits<double>::quiet_NaN(), 0, 0, 0, 0};
    double values[3];
    Matrix rows{};
    utf_sprind(bad, values, rows.data(), &selector, &three, &three);
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_EQ(rows, (Matrix{1, 0, 0, 0, 1, 0, 0, 0, 1}));
}

TEST(utf_calprinquat, SortsRepairsAndLaysOutByComponentCount) {
    const int code = 25123;  // 25 after the division
    const int nshr = 3;
    int ndi = 3;
    int ncomp = 7;
    double tensor[6] = {1, 3, 2, 0, 0, 0};
    std::array<double, 7> out{};
    utf_calprinquat(tensor, out.data(), &code, &ncomp, &ndi, &nshr);
    EXPECT_EQ((std::vector<double>(out.begin(), out.begin() + 3)), (std::vector<double>{3, 2, 1}));
    const Matrix r = ToMatrix({out[3], out[4], out[5], out[6]});
    EXPECT_LE(Distance(r, Matrix{0, 1, 0, 0, 0, 1, 1, 0, 0}), 1e-15);

    double line[6] = {4, 3, 9, 9, 9, 9};  // components 11 and 12 move to a plane state
    const int oneShear = 1;
    ndi = 1;
    ncomp = 9;
    utf_calprinquat(line, out.data(), &code, &ncomp, &ndi, &oneShear);
    EXPECT_EQ(ndi, 2);
    EXPECT_EQ((std::vector<double>(line, line + 3)), (std::vector<double>{4, 0, 3}));
    EXPECT_NEAR(out[0], 2 + std::sqrt(13.0), 1e-14);
    EXPECT_NEAR(out[1], 2 - std::sqrt(13.0), 1e-14);

    double plane[4] = {-2, -1, 0, 9};  // in-plane values stay ahead of the 3-axis
    ndi = 2;
    ncomp = 4;
    utf_calprinquat(plane, out.data(), &code, &ncomp, &ndi, &oneShear);
    EXPECT_EQ((std::vector<double>(out.begin(), out.begin() + 3)),
              (std::vector<double>{-1, -2, 0}));
    EXPECT_NEAR(std::fabs(out[3]), half, 1e-15);
    EXPECT_NEAR(out[4], half, 1e-15);
    EXPECT_EQ(out[5], 0);
    EXPECT_EQ(out[6], 0);
}

}  // namespace
