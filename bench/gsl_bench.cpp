// A million points turned by a matrix in place: gsl_Point against a plain struct of the same 40
// bytes and against Eigen, whose points have 24.

#include <benchmark/benchmark.h>

#ifdef BENCH_HAS_EIGEN3
#include <Eigen/Geometry>
#endif

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "bench/bench_Ratios.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_Point.h"

namespace {

constexpr std::size_t kCount = 1'000'000;
constexpr double kAngleRad = 0.01;

struct PlainPoint {
    std::uint64_t tag;
    double x, y, z;
    std::uint64_t id;
};
static_assert(sizeof(PlainPoint) == sizeof(gsl_Point));

/// Calls `add(x, y, z)` with the same points for every competitor.
template <class Add>
void MakePoints(Add add) {
    std::mt19937_64 random(7);
    const auto coordinate = [&random] { return static_cast<double>(random() >> 11) * 0x1p-52 - 1; };
    for (std::size_t i = 0; i < kCount; ++i) {
        const double x = coordinate();
        const double y = coordinate();
        add(x, y, coordinate());
    }
}

gsl_Matrix Rotation() {
    gsl_Matrix m;
    m.AxisRotation(gsl_Point(0.1, 0.2, 0.3), gsl_Vector(1, 2, 3), kAngleRad);
    return m;
}

void TransformPlainStructs(benchmark::State& state) {
    std::vector<PlainPoint> points;
    MakePoints([&](double x, double y, double z) { points.push_back({0, x, y, z, 0}); });
    double m[4][4];
    Rotation().AsArray(m);
    benchmark::DoNotOptimize(m);
    for (auto _ : state) {
        for (PlainPoint& p : points) {
            const double x = p.x;
            const double y = p.y;
            const double z = p.z;
            p.x = m[0][0] * x + m[0][1] * y + m[0][2] * z + m[0][3];
            p.y = m[1][0] * x + m[1][1] * y + m[1][2] * z + m[1][3];
            p.z = m[2][0] * x + m[2][1] * y + m[2][2] * z + m[2][3];
        }
        benchmark::ClobberMemory();
    }
}

void TransformPoints(benchmark::State& state) {
    std::vector<gsl_Point> points;
    MakePoints([&](double x, double y, double z) { points.emplace_back(x, y, z); });
    gsl_Matrix m = Rotation();
    benchmark::DoNotOptimize(m);
    for (auto _ : state) {
        for (gsl_Point& p : points) p.Transform(m);
        benchmark::ClobberMemory();
    }
}

#ifdef BENCH_HAS_EIGEN3
void TransformEigenPoints(benchmark::State& state) {
    std::vector<Eigen::Vector3d> points;
    MakePoints([&](double x, double y, double z) { points.emplace_back(x, y, z); });
    const gsl_Matrix rotation = Rotation();
    double entries[4][4];
    rotation.AsArray(entries);
    Eigen::Affine3d m;
    for (int i = 0; i < 16; ++i) m.matrix()(i / 4, i % 4) = entries[i / 4][i % 4];
    benchmark::DoNotOptimize(m);
    for (auto _ : state) {
        for (Eigen::Vector3d& p : points) p = m * p;
        benchmark::ClobberMemory();
    }
}
BENCHMARK(TransformEigenPoints)->Unit(benchmark::kMicrosecond);
#endif

BENCHMARK(TransformPlainStructs)->Unit(benchmark::kMicrosecond);
BENCHMARK(TransformPoints)->Unit(benchmark::kMicrosecond);

constexpr bench_Ratio kRatios[] = {
    {"TransformPoints", "TransformPlainStructs", 1.2},
    {"TransformPoints", "TransformEigenPoints", 2.0},
};

}  // namespace

int main(int argc, char** argv) { return bench_Main(argc, argv, kRatios); }
