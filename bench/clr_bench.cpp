// The clearance check of a whole assembly: against the mesh distance of FCL over the same pairs of
// parts, against the same search through octrees, and on the model with its triangles quartered.
//
// The model is the two-cylinder engine of Debian's assimp-testmodels (scripts/fetch-models), or the
// file that the environment variable KTSOVU_BENCH_MODEL names.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "bench/bench_Ratios.h"
#include "gsl/gsl_BoxMeasures.h"
#include "gsl/gsl_OctreeBBox.h"
#include "host/clearance/clr_Body.h"
#include "host/clearance/clr_Check.h"
#include "host/import/imp_ModelReader.h"
#include "host/model/hst_Classes.h"
#include "host/model/hst_PartName.h"

#ifdef BENCH_HAS_FCL
#include <fcl/geometry/bvh/BVH_model.h>
#include <fcl/narrowphase/distance.h>
#endif

namespace {

const std::vector<hst_Part>& Engine() {
    static const std::vector<hst_Part> parts = [] {
        const char* model = std::getenv("KTSOVU_BENCH_MODEL");
        std::vector<hst_Part> read =
            imp_ReadModel(model ? model : KTSOVU_ENGINE, imp_ReadLimits{}, [](double) {});
        hst_MakeNamesUnique(read);
        return read;
    }();
    return parts;
}

/// Every triangle in four, by the middles of its sides.
hst_Part Quartered(const hst_Part& part) {
    std::vector<float> positions;
    std::vector<int> triangles;
    std::map<std::pair<int, int>, int> middles;
    std::vector<gsl_Point> vertices;
    for (int i = 0; i < part.VertexCount(); ++i) vertices.push_back(part.PlacedVertex(i));
    const auto middle = [&](int a, int b) {
        const auto [entry, isNew] =
            middles.try_emplace(std::minmax(a, b), static_cast<int>(vertices.size()));
        if (isNew) {
            vertices.emplace_back(vertices[static_cast<std::size_t>(a)],
                                  vertices[static_cast<std::size_t>(b)]);
        }
        return entry->second;
    };
    for (int i = 0; i < part.TriangleCount(); ++i) {
        const auto [a, b, c] = part.Triangle(i);
        const int ab = middle(a, b);
        const int bc = middle(b, c);
        const int ca = middle(c, a);
        triangles.insert(triangles.end(), {a, ab, ca, ab, b, bc, ca, bc, c, ab, bc, ca});
    }
    for (const gsl_Point& v : vertices) {
        for (const double x : {v.GetX(), v.GetY(), v.GetZ()}) {
            positions.push_back(static_cast<float>(x));
        }
    }
    return {part.Name(), gsl_Matrix(), std::move(positions), std::move(triangles)};
}

std::vector<hst_Part> Quartered(const std::vector<hst_Part>& parts) {
    std::vector<hst_Part> finer;
    for (const hst_Part& part : parts) finer.push_back(Quartered(part));
    return finer;
}

/// The touch length is a millionth of the diagonal, the gap a hundredth.
const clr_Lengths& Lengths() {
    static const double touch = clr_DefaultTouch(Engine());
    static const clr_Lengths lengths{1e4 * touch, touch};
    return lengths;
}

/// Pairs of bodies whose boxes are nearer than the gap.
std::vector<std::pair<const clr_Body*, const clr_Body*>> NearPairs(
    const std::vector<std::unique_ptr<clr_Body>>& bodies) {
    std::vector<std::pair<const clr_Body*, const clr_Body*>> pairs;
    for (std::size_t i = 0; i < bodies.size(); ++i) {
        for (std::size_t j = i + 1; j < bodies.size(); ++j) {
            if (bodies[i]->Box().DistanceSq(bodies[j]->Box()) < Lengths().gap * Lengths().gap) {
                pairs.emplace_back(bodies[i].get(), bodies[j].get());
            }
        }
    }
    return pairs;
}

std::vector<std::unique_ptr<clr_Body>> Bodies() {
    std::vector<std::unique_ptr<clr_Body>> bodies;
    for (const hst_Part& part : Engine()) bodies.push_back(std::make_unique<clr_Body>(part));
    return bodies;
}

/// Trees, and everything that the check tells of each pair, on one thread.
void Check(benchmark::State& state) {
    for (auto _ : state) {
        const auto bodies = Bodies();
        double sum = 0;
        for (const auto& [a, b] : NearPairs(bodies)) sum += clr_CheckPair(*a, *b, Lengths()).length;
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(Check)->Name("CheckPairs")->Unit(benchmark::kMillisecond);

/// Trees and nearest points alone, no farther than the gap.
void Distances(benchmark::State& state) {
    for (auto _ : state) {
        const auto bodies = Bodies();
        double sum = 0;
        for (const auto& [a, b] : NearPairs(bodies)) {
            clr_Nearest nearest;
            nearest.distanceSq = Lengths().gap * Lengths().gap;
            if (a->Tree().FindNearest(b->Tree(), nearest)) sum += std::sqrt(nearest.distanceSq);
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(Distances)->Name("DistancesByTrees")->Unit(benchmark::kMillisecond);

/// An octree over up to 2,000 neighbouring triangles, whose numbers follow the order of the tree.
class Patch {
  public:
    Patch(const clr_TriangleTree& tree, std::size_t first, std::size_t count)
        : triangles(tree.Triangles().begin() + static_cast<std::ptrdiff_t>(first),
                    tree.Triangles().begin() + static_cast<std::ptrdiff_t>(first + count)) {
        gsl_BBox whole;
        for (const clr_Triangle& t : triangles) {
            gsl_BBox box;
            for (const clr_Vec& p : t) box.Add(gsl_Point(p.x, p.y, p.z));
            boxes.push_back(box);
            whole.Add(box);
        }
        octree = std::make_unique<gsl_OctreeBBox>(whole, nullptr, 10u, 0u, true);
        for (const bool subdivide : {true, false}) {
            for (unsigned i = 0; i < boxes.size(); ++i) {
                octree->Classify(i, boxes[i], gsl_Util::Instance().LinTol(), subdivide);
            }
        }
    }
    void FindNearest(Patch& other, double tolerance, clr_Nearest& nearest) {
        gsl_OctreeBBox::PairTable pairs;
        octree->Intersect(*other.octree, gsl_Matrix(), gsl_Matrix(), pairs,
                          tolerance + 2 * gsl_Util::Instance().LinTol());
        gsl_OctreeBBox::ForEachPair(pairs, [&](unsigned i, unsigned j) {
            const double gap = BoxBoxDistance(boxes[i], other.boxes[j]);
            if (gap * gap < nearest.distanceSq) {
                clr_FindNearest(triangles[i], other.triangles[j], nearest);
            }
        });
        gsl_OctreeBBox::FreePairs(pairs);
    }

  private:
    std::vector<clr_Triangle> triangles;
    std::vector<gsl_BBox> boxes;
    std::unique_ptr<gsl_OctreeBBox> octree;
};

std::vector<std::unique_ptr<Patch>> PatchesOf(const clr_TriangleTree& tree) {
    constexpr std::size_t kPatch = 2000;
    std::vector<std::unique_ptr<Patch>> patches;
    const std::size_t count = tree.Triangles().size();
    for (std::size_t first = 0; first < count; first += kPatch) {
        patches.push_back(std::make_unique<Patch>(tree, first, std::min(kPatch, count - first)));
    }
    return patches;
}

/// The same nearest points, with tolerances that double from the touch length to the gap.
void DistancesByOctrees(benchmark::State& state) {
    for (auto _ : state) {
        const auto bodies = Bodies();
        std::map<const clr_Body*, std::vector<std::unique_ptr<Patch>>> patches;
        for (const auto& body : bodies) patches[body.get()] = PatchesOf(body->Tree());
        double sum = 0;
        for (const auto& [a, b] : NearPairs(bodies)) {
            clr_Nearest nearest;
            nearest.distanceSq = Lengths().gap * Lengths().gap;
            for (double tolerance = Lengths().touch;; tolerance *= 2) {
                for (const auto& mine : patches[a]) {
                    for (const auto& others : patches[b]) {
                        mine->FindNearest(*others, std::min(tolerance, Lengths().gap), nearest);
                    }
                }
                if (std::sqrt(nearest.distanceSq) <= tolerance || tolerance >= Lengths().gap) break;
            }
            sum += std::sqrt(nearest.distanceSq);
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(DistancesByOctrees)->Name("DistancesByOctrees")->Unit(benchmark::kMillisecond);

/// The whole check on all threads, on the model and with its triangles quartered once and twice.
void WholeCheck(benchmark::State& state) {
    std::vector<hst_Part> parts = Engine();
    for (int i = 0; i < state.range(0); ++i) parts = Quartered(parts);
    std::size_t triangles = 0;
    for (const hst_Part& part : parts) triangles += static_cast<std::size_t>(part.TriangleCount());
    for (auto _ : state) {
        const clr_Report report = clr_Check(parts, Lengths(), {}, [](std::size_t, std::size_t) {});
        benchmark::DoNotOptimize(report.pairs.size());
    }
    state.counters["triangles"] = static_cast<double>(triangles);
}

void RegisterWholeCheck(const char* name, int quarterings) {
    benchmark::RegisterBenchmark(name, WholeCheck)
        ->Arg(quarterings)
        ->Iterations(1)
        ->MeasureProcessCPUTime()
        ->Unit(benchmark::kMillisecond);
}

#ifdef BENCH_HAS_FCL
using FclMesh = fcl::BVHModel<fcl::OBBRSSd>;

std::shared_ptr<FclMesh> FclMeshOf(const clr_Body& body) {
    auto mesh = std::make_shared<FclMesh>();
    mesh->beginModel();
    for (const clr_Triangle& t : body.Tree().Triangles()) {
        mesh->addTriangle({t[0].x, t[0].y, t[0].z}, {t[1].x, t[1].y, t[1].z},
                          {t[2].x, t[2].y, t[2].z});
    }
    mesh->endModel();
    return mesh;
}

/// FCL's trees and distances of the same pairs.
void FclDistances(benchmark::State& state) {
    const auto bodies = Bodies();
    for (auto _ : state) {
        std::map<const clr_Body*, fcl::CollisionObjectd> objects;
        for (const auto& body : bodies) {
            objects.emplace(body.get(), fcl::CollisionObjectd(FclMeshOf(*body)));
        }
        double sum = 0;
        for (const auto& [a, b] : NearPairs(bodies)) {
            const fcl::DistanceRequestd request(true);
            fcl::DistanceResultd result;
            sum += fcl::distance(&objects.at(a), &objects.at(b), request, result);
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(FclDistances)->Name("DistancesByFcl")->Unit(benchmark::kMillisecond);
#endif

constexpr bench_Ratio kRatios[] = {
    {"DistancesByTrees", "DistancesByFcl", 1},
    {"CheckPairs", "DistancesByFcl", 1.5},
    {"DistancesByTrees", "DistancesByOctrees", 1},
    // Four times the triangles.
    {"WholeCheckQuartered", "WholeCheck", 5},
    {"WholeCheckQuarteredTwice", "WholeCheckQuartered", 5},
};

}  // namespace

int main(int argc, char** argv) {
    const hst_ClassRegistration classes;
    RegisterWholeCheck("WholeCheck", 0);
    RegisterWholeCheck("WholeCheckQuartered", 1);
    RegisterWholeCheck("WholeCheckQuarteredTwice", 2);
    return bench_Main(argc, argv, kRatios);
}
