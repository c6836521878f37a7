// Matrix to quaternion and back: the inline forms, the flat routines (called across the library's
// border) and Eigen's double quaternions, over the same random rotations.
#include <array>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "bench/bench_Ratios.h"
#include "utf/utf_Rotation.h"
#include "utf/utf_RotationC.h"
#ifdef BENCH_HAS_EIGEN3
#include <Eigen/Geometry>
#endif

namespace {

using Matrix = std::array<double, 9>;

std::vector<Matrix> RandomRotations() {
    std::mt19937_64 engine(7);
    const auto uniform = [&] { return static_cast<double>(engine() >> 11) * 0x1p-52 - 1; };
    std::vector<Matrix> rotations;
    while (rotations.size() < 4096) {
        double q[4] = {uniform(), uniform(), uniform(), uniform()};
        const double norm = std::hypot(std::hypot(q[0], q[1]), std::hypot(q[2], q[3]));
        if (norm < 0.1 || norm > 1) continue;
        for (double& component : q) component /= norm;
        utf_RotationOfQuaternion(rotations.emplace_back().data(), q);
    }
    return rotations;
}

template <class Convert>
void ConvertAll(benchmark::State& state, const Convert& convert) {
    const std::vector<Matrix> rotations = RandomRotations();
    for (auto _ : state) {
        for (const Matrix& rotation : rotations) convert(rotation.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(rotations.size()));
}

void InlinePair(benchmark::State& state) {
    ConvertAll(state, [](const double* rotation) {
        double q[4];
        double r[9];
        utf_QuaternionOfRotation(q, rotation);
        utf_RotationOfQuaternion(r, q);
        benchmark::DoNotOptimize(r);
    });
}
BENCHMARK(InlinePair);

void FlatPair(benchmark::State& state) {
    ConvertAll(state, [](const double* rotation) {
        const int vectorFirst = 0;
        double q[4];
        double r[9];
        int flag = 0;
        utf_calquat(q, rotation, &vectorFirst);
        ktsovuutf_quat2rot3d(q, r, &flag);
        benchmark::DoNotOptimize(r);
    });
}
BENCHMARK(FlatPair);

#ifdef BENCH_HAS_EIGEN3
void EigenPair(benchmark::State& state) {
    ConvertAll(state, [](const double* rotation) {
        const Eigen::Map<const Eigen::Matrix3d> matrix(rotation);
        Eigen::Matrix3d r = Eigen::Quaterniond(matrix).toRotationMatrix();
        benchmark::DoNotOptimize(r);
    });
}
BENCHMARK(EigenPair);
#endif

constexpr bench_Ratio kRatios[] = {
    {"InlinePair", "EigenPair", 1.1},
};

}  // namespace

int main(int argc, char** argv) { return bench_Main(argc, argv, kRatios); }
