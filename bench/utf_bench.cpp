// Matrix to quaternion and back, flat routines against Eigen's double quaternions: the same random
// rotations, both directions in one pass.
#include <benchmark/benchmark.h>

#include <Eigen/Geometry>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "utf/utf_RotationC.h"

namespace {

constexpr std::size_t count = 4096;

std::vector<Eigen::Matrix3d> RandomRotations() {
    std::mt19937_64 engine(7);
    const auto uniform = [&] { return static_cast<double>(engine() >> 11) * 0x1p-52 - 1; };
    std::vector<Eigen::Matrix3d> rotations;
    while (rotations.size() < count) {
        const Eigen::Quaterniond q(uniform(), uniform(), uniform(), uniform());
        if (q.norm() > 0.1 && q.norm() < 1) rotations.push_back(q.normalized().toRotationMatrix());
    }
    return rotations;
}

void FlatPair(benchmark::State& state) {
    const std::vector<Eigen::Matrix3d> rotations = RandomRotations();
    const int vectorFirst = 0;
    for (auto _ : state) {
        for (const Eigen::Matrix3d& rotation : rotations) {
            double q[4];
            double r[9];
            int flag = 0;
            utf_calquat(q, rotation.data(), &vectorFirst);
            ktsovuutf_quat2rot3d(q, r, &flag);
            benchmark::DoNotOptimize(r);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(count));
}
BENCHMARK(FlatPair);

void EigenPair(benchmark::State& state) {
    const std::vector<Eigen::Matrix3d> rotations = RandomRotations();
    for (auto _ : state) {
        for (const Eigen::Matrix3d& rotation : rotations) {
            Eigen::Matrix3d r = Eigen::Quaterniond(rotation).toRotationMatrix();
            benchmark::DoNotOptimize(r);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(count));
}
BENCHMARK(EigenPair);

}  // namespace
