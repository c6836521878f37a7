// Box pairs of two spheres of triangles: the octree against the loop over all pairs and against
// CGAL; growing a box and the gap of boxes against plain loops over the same data.

#include <benchmark/benchmark.h>

#ifdef BENCH_HAS_CGAL
#include <CGAL/Box_intersection_d/Box_d.h>
#include <CGAL/box_intersection_d.h>
#endif

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "bench/bench_Ratios.h"
#include "gsl/gsl_BBox.h"
#include "gsl/gsl_BoxMeasures.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_MortonOrder.h"
#include "gsl/gsl_OctreeBBox.h"

namespace {

constexpr double kGap = 0.005;

using Boxes = std::vector<gsl_BBox>;
using Pairs = std::vector<std::pair<unsigned, unsigned>>;

/// A double in [-1, 1) from the generator's own bits, the same with every standard library.
double Signed(std::mt19937_64& random) { return static_cast<double>(random() >> 11) * 0x1p-52 - 1; }

/// The boxes of `count` triangles of a unit sphere in random order: the faces of an icosahedron in
/// f^2 triangles each, their corners moved by up to a fifth of an edge.
Boxes SphereBoxes(std::size_t count, const gsl_Point& centre, std::uint64_t seed) {
    const double g = (1 + std::sqrt(5.0)) / 2;
    const gsl_Point corner[12] = {{-1, g, 0}, {1, g, 0}, {-1, -g, 0}, {1, -g, 0},
                                  {0, -1, g}, {0, 1, g}, {0, -1, -g}, {0, 1, -g},
                                  {g, 0, -1}, {g, 0, 1}, {-g, 0, -1}, {-g, 0, 1}};
    const int face[20][3] = {{0, 11, 5}, {0, 5, 1},  {0, 1, 7},   {0, 7, 10}, {0, 10, 11},
                             {1, 5, 9},  {5, 11, 4}, {11, 10, 2}, {10, 7, 6}, {7, 1, 8},
                             {3, 9, 4},  {3, 4, 2},  {3, 2, 6},   {3, 6, 8},  {3, 8, 9},
                             {4, 9, 5},  {2, 4, 11}, {6, 2, 10},  {8, 6, 7},  {9, 8, 1}};
    const int f = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(count) / 20)));
    std::mt19937_64 random(seed);
    const auto grow = [&](gsl_BBox& box, const int* corners, int i, int j) {
        double v[3];
        for (int axis = 0; axis < 3; ++axis) {
            v[axis] = corner[corners[0]][axis] * (f - i - j) + corner[corners[1]][axis] * i +
                      corner[corners[2]][axis] * j;
        }
        const double length = std::hypot(v[0], v[1], v[2]);
        const auto jitter = [&] { return 0.2 / f * Signed(random); };
        box.Add(gsl_Point(centre.GetX() + v[0] / length + jitter(),
                          centre.GetY() + v[1] / length + jitter(),
                          centre.GetZ() + v[2] / length + jitter()));
    };
    Boxes boxes;
    for (const auto& corners : face) {
        for (int i = 0; i < f; ++i) {
            for (int j = 0; i + j < f; ++j) {
                gsl_BBox up;
                grow(up, corners, i, j);
                grow(up, corners, i + 1, j);
                grow(up, corners, i, j + 1);
                boxes.push_back(up);
                if (i + j + 1 == f) continue;
                gsl_BBox down;
                grow(down, corners, i + 1, j);
                grow(down, corners, i + 1, j + 1);
                grow(down, corners, i, j + 1);
                boxes.push_back(down);
            }
        }
    }
    for (std::size_t i = boxes.size(); i > 1; --i) std::swap(boxes[i - 1], boxes[random() % i]);
    boxes.resize(count);
    return boxes;
}

struct Spheres {
    Boxes first;
    Boxes second;
    /// The pairs within the gap, found by a sweep along x and sorted.
    Pairs nearPairs;
};

Pairs SweptPairs(const Boxes& first, const Boxes& second) {
    std::multimap<double, unsigned> byLow;
    for (unsigned j = 0; j != second.size(); ++j) byLow.emplace(second[j].Low().GetX(), j);
    double longest = 0;
    for (const gsl_BBox& box : second) longest = std::max(longest, box.XLen());
    Pairs pairs;
    for (unsigned i = 0; i != first.size(); ++i) {
        const double from = first[i].Low().GetX() - 2 * kGap - longest;
        const double to = first[i].High().GetX() + 2 * kGap;
        for (auto j = byLow.lower_bound(from); j != byLow.end() && j->first <= to; ++j) {
            if (BoxBoxDistance(first[i], second[j->second]) <= kGap) {
                pairs.emplace_back(i, j->second);
            }
        }
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

const Spheres& SpheresOf(std::size_t count) {
    static std::map<std::size_t, Spheres> made;
    Spheres& spheres = made[count];
    if (spheres.first.empty()) {
        spheres.first = SphereBoxes(count, gsl_Point(0, 0, 0), 1);
        spheres.second = SphereBoxes(count, gsl_Point(0.6, 0.3, 0.2), 2);
        spheres.nearPairs = SweptPairs(spheres.first, spheres.second);
    }
    return spheres;
}

/// The boxes in the given order, and their tree.
struct SortedTree {
    explicit SortedTree(const Boxes& unsorted)
        : order(gsl_MortonOrder(unsorted.data(), unsorted.size())) {
        boxes.reserve(unsorted.size());
        gsl_BBox bounds;
        for (const unsigned item : order) {
            boxes.push_back(unsorted[item]);
            bounds.Add(unsorted[item]);
        }
        root = std::make_unique<gsl_OctreeBBox>(bounds, nullptr, 10, 0, false);
        for (const bool subdivide : {true, false}) {
            for (unsigned i = 0; i != boxes.size(); ++i) {
                root->Classify(i, boxes[i], gsl_Util::Instance().LinTol(), subdivide);
            }
        }
    }

    std::vector<unsigned> order;
    Boxes boxes;
    std::unique_ptr<gsl_OctreeBBox> root;
};

/// The bytes that are allocated now, 0 where the platform does not tell.
std::size_t AllocatedBytes() {
#ifdef __GLIBC__
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
#else
    return 0;
#endif
}

/// What the octree needs for its answer.
struct OctreeCost {
    std::size_t candidates = 0;
    std::size_t bytes = 0;
};

Pairs OctreePairs(const Boxes& first, const Boxes& second, OctreeCost& cost) {
    const std::size_t bytesBefore = AllocatedBytes();
    const SortedTree a(first);
    const SortedTree b(second);
    gsl_OctreeBBox::PairTable table;
    a.root->Intersect(*b.root, gsl_Matrix(), gsl_Matrix(), table,
                      kGap + 2 * gsl_Util::Instance().LinTol());
    cost = {0, AllocatedBytes() - bytesBefore};
    Pairs pairs;
    gsl_OctreeBBox::ForEachPair(table, [&](unsigned i, unsigned j) {
        ++cost.candidates;
        if (BoxBoxDistance(a.boxes[i], b.boxes[j]) <= kGap) {
            pairs.emplace_back(a.order[i], b.order[j]);
        }
    });
    gsl_OctreeBBox::FreePairs(table);
    return pairs;
}

void PairsOctree(benchmark::State& state) {
    const Spheres& spheres = SpheresOf(static_cast<std::size_t>(state.range(0)));
    Pairs pairs;
    OctreeCost cost;
    for (auto _ : state) pairs = OctreePairs(spheres.first, spheres.second, cost);
    std::sort(pairs.begin(), pairs.end());
    if (pairs != spheres.nearPairs) state.SkipWithError("not the pairs of the sweep");
    if (cost.bytes > 150'000'000) state.SkipWithError("more than 150 MB");
    state.counters["candidates"] = static_cast<double>(cost.candidates);
    state.counters["MB"] = static_cast<double>(cost.bytes) / 1e6;
}
BENCHMARK(PairsOctree)->Name("PairsOctree10k")->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(PairsOctree)->Name("PairsOctree100k")->Arg(100'000)->Unit(benchmark::kMillisecond);

/// The loop over all pairs, at the larger size over the first hundredth of the rows.
void PairsLoop(benchmark::State& state) {
    const Spheres& spheres = SpheresOf(static_cast<std::size_t>(state.range(0)));
    const auto rows = static_cast<unsigned>(state.range(1));
    for (auto _ : state) {
        Pairs pairs;
        for (unsigned i = 0; i != rows; ++i) {
            for (unsigned j = 0; j != spheres.second.size(); ++j) {
                if (BoxBoxDistance(spheres.first[i], spheres.second[j]) <= kGap) {
                    pairs.emplace_back(i, j);
                }
            }
        }
        benchmark::DoNotOptimize(pairs.data());
    }
}
BENCHMARK(PairsLoop)->Name("PairsLoop10k")->Args({10'000, 10'000})->Unit(benchmark::kMillisecond);
BENCHMARK(PairsLoop)
    ->Name("PairsLoop100kHundredth")
    ->Args({100'000, 1'000})
    ->Unit(benchmark::kMillisecond);

#ifdef BENCH_HAS_CGAL
Pairs CgalPairs(const Boxes& first, const Boxes& second) {
    using Box = CGAL::Box_intersection_d::Box_with_info_d<double, 3, unsigned>;
    const auto convert = [](const Boxes& boxes, double margin) {
        std::vector<Box> converted;
        converted.reserve(boxes.size());
        for (unsigned i = 0; i != boxes.size(); ++i) {
            const gsl_Point& low = boxes[i].Low();
            const gsl_Point& high = boxes[i].High();
            double from[3] = {low.GetX() - margin, low.GetY() - margin, low.GetZ() - margin};
            double to[3] = {high.GetX() + margin, high.GetY() + margin, high.GetZ() + margin};
            converted.emplace_back(from, to, i);
        }
        return converted;
    };
    std::vector<Box> a = convert(first, kGap);
    std::vector<Box> b = convert(second, 0);
    Pairs pairs;
    const auto test = [&](const Box& i, const Box& j) {
        if (BoxBoxDistance(first[i.info()], second[j.info()]) <= kGap) {
            pairs.emplace_back(i.info(), j.info());
        }
    };
    CGAL::box_intersection_d(a.begin(), a.end(), b.begin(), b.end(), test);
    return pairs;
}

void PairsCgal(benchmark::State& state) {
    const Spheres& spheres = SpheresOf(static_cast<std::size_t>(state.range(0)));
    Pairs pairs;
    for (auto _ : state) pairs = CgalPairs(spheres.first, spheres.second);
    std::sort(pairs.begin(), pairs.end());
    if (pairs != spheres.nearPairs) state.SkipWithError("not the pairs of the sweep");
}
BENCHMARK(PairsCgal)->Name("PairsCgal10k")->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(PairsCgal)->Name("PairsCgal100k")->Arg(100'000)->Unit(benchmark::kMillisecond);
#endif

/// A million, or as many as stay in the nearest cache.
constexpr int kMillion = 1'000'000;
constexpr int kCached = 1'000;

std::vector<gsl_Point> RandomPoints(std::int64_t count, std::uint64_t seed) {
    std::mt19937_64 random(seed);
    std::vector<gsl_Point> points;
    points.reserve(static_cast<std::size_t>(count));
    for (std::int64_t i = 0; i < count; ++i) {
        const double x = Signed(random);
        const double y = Signed(random);
        points.emplace_back(x, y, Signed(random));
    }
    return points;
}

/// Cubes of a tenth at random places.
Boxes RandomCubes(std::int64_t count, std::uint64_t seed) {
    Boxes boxes;
    boxes.reserve(static_cast<std::size_t>(count));
    for (const gsl_Point& p : RandomPoints(count, seed)) {
        boxes.emplace_back(p, p + gsl_Vector(0.1, 0.1, 0.1));
    }
    return boxes;
}

void GrowBox(benchmark::State& state) {
    const std::vector<gsl_Point> points = RandomPoints(state.range(0), 5);
    for (auto _ : state) {
        gsl_BBox box;
        for (const gsl_Point& p : points) box.Add(p);
        benchmark::DoNotOptimize(box.Size());
    }
}
BENCHMARK(GrowBox)->Name("GrowBox1M")->Arg(kMillion)->Unit(benchmark::kMicrosecond);
BENCHMARK(GrowBox)->Name("GrowBoxCached")->Arg(kCached)->Unit(benchmark::kMicrosecond);

void GrowPlain(benchmark::State& state) {
    const std::vector<gsl_Point> points = RandomPoints(state.range(0), 5);
    for (auto _ : state) {
        const double infinity = std::numeric_limits<double>::infinity();
        double low[3] = {infinity, infinity, infinity};
        double high[3] = {-infinity, -infinity, -infinity};
        for (const gsl_Point& p : points) {
            low[0] = std::min(low[0], p.GetX());
            low[1] = std::min(low[1], p.GetY());
            low[2] = std::min(low[2], p.GetZ());
            high[0] = std::max(high[0], p.GetX());
            high[1] = std::max(high[1], p.GetY());
            high[2] = std::max(high[2], p.GetZ());
        }
        benchmark::DoNotOptimize(std::hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]));
    }
}
BENCHMARK(GrowPlain)->Name("GrowPlain1M")->Arg(kMillion)->Unit(benchmark::kMicrosecond);
BENCHMARK(GrowPlain)->Name("GrowPlainCached")->Arg(kCached)->Unit(benchmark::kMicrosecond);

/// Adds up `gap` over pairs of boxes.
template <class Gap>
void SumGaps(benchmark::State& state, Gap gap) {
    const Boxes first = RandomCubes(state.range(0), 1);
    const Boxes second = RandomCubes(state.range(0), 2);
    for (auto _ : state) {
        double sum = 0;
        for (std::size_t i = 0; i != first.size(); ++i) sum += gap(first[i], second[i]);
        benchmark::DoNotOptimize(sum);
    }
}

/// The gap with `axisGap(lowA, highA, lowB, highB)` along each axis, for boxes that are not empty.
template <class AxisGap>
double PlainGap(const gsl_BBox& a, const gsl_BBox& b, AxisGap axisGap) {
    const double x = axisGap(a.Low().GetX(), a.High().GetX(), b.Low().GetX(), b.High().GetX());
    const double y = axisGap(a.Low().GetY(), a.High().GetY(), b.Low().GetY(), b.High().GetY());
    const double z = axisGap(a.Low().GetZ(), a.High().GetZ(), b.Low().GetZ(), b.High().GetZ());
    return std::sqrt(x * x + y * y + z * z);
}

void GapBox(benchmark::State& state) {
    SumGaps(state, [](const gsl_BBox& a, const gsl_BBox& b) { return BoxBoxDistance(a, b); });
}
BENCHMARK(GapBox)->Name("GapBox1M")->Arg(kMillion)->Unit(benchmark::kMicrosecond);
BENCHMARK(GapBox)->Name("GapBoxCached")->Arg(kCached)->Unit(benchmark::kMicrosecond);

/// The same arithmetic without the tests for emptiness.
void GapPlain(benchmark::State& state) {
    SumGaps(state, [](const gsl_BBox& a, const gsl_BBox& b) {
        return PlainGap(a, b, [](double lowA, double highA, double lowB, double highB) {
            const double both = std::max(highA, highB) - std::min(lowA, lowB);
            return std::max(0.0, both - ((highA - lowA) + (highB - lowB)));
        });
    });
}
BENCHMARK(GapPlain)->Name("GapPlain1M")->Arg(kMillion)->Unit(benchmark::kMicrosecond);
BENCHMARK(GapPlain)->Name("GapPlainCached")->Arg(kCached)->Unit(benchmark::kMicrosecond);

/// The gap between the faces, which rounds differently.
void GapOfFaces(benchmark::State& state) {
    SumGaps(state, [](const gsl_BBox& a, const gsl_BBox& b) {
        return PlainGap(a, b, [](double lowA, double highA, double lowB, double highB) {
            return std::max(0.0, std::max(lowA - highB, lowB - highA));
        });
    });
}
BENCHMARK(GapOfFaces)->Name("GapOfFaces1M")->Arg(kMillion)->Unit(benchmark::kMicrosecond);
BENCHMARK(GapOfFaces)->Name("GapOfFacesCached")->Arg(kCached)->Unit(benchmark::kMicrosecond);

// Over a million boxes the memory sets the pace. From the nearest cache the tests for emptiness
// show, and the limits only watch that they stay small.
constexpr bench_Ratio kRatios[] = {
    {"PairsOctree10k", "PairsLoop10k", 1.0 / 15},
    {"PairsOctree100k", "PairsLoop100kHundredth", 100.0 / 15},
    {"PairsOctree10k", "PairsCgal10k", 2},
    {"PairsOctree100k", "PairsCgal100k", 2},
    {"GrowBox1M", "GrowPlain1M", 1.1},
    {"GapBox1M", "GapPlain1M", 1.1},
    {"GapBox1M", "GapOfFaces1M", 1.1},
    {"GrowBoxCached", "GrowPlainCached", 2},
    {"GapBoxCached", "GapPlainCached", 1.5},
    {"GapBoxCached", "GapOfFacesCached", 2.5},
};

}  // namespace

int main(int argc, char** argv) { return bench_Main(argc, argv, kRatios); }
