#include "host/clearance/clr_Check.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>
#include <random>
#include <set>

#include "ann/annC_Text.h"
#include "ann/annC_ViewportAnchor.h"
#include "host/clearance/clr_Annotations.h"
#include "host/clearance/clr_Arrangement.h"
#include "host/clearance/clr_Body.h"
#include "host/import/imp_ModelReader.h"
#include "host/model/hst_Error.h"
#include "host/model/hst_PartName.h"
#include "host/tests/host_DebianModels.h"
#include "host/tests/host_TestModels.h"
#include "testing/test_Rounds.h"

namespace {

using Random = std::mt19937;

double Uniform(Random& random, double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
}
clr_Vec RandomPoint(Random& random, double size = 1) {
    return {Uniform(random, -size, size), Uniform(random, -size, size),
            Uniform(random, -size, size)};
}

/// A box of triangles, its corners in doubles that floats hold.
hst_Part Box(const std::string& name, clr_Vec low, clr_Vec high) {
    std::vector<float> positions;
    for (int i = 0; i < 8; ++i) {
        positions.push_back(static_cast<float>(i & 1 ? high.x : low.x));
        positions.push_back(static_cast<float>(i & 2 ? high.y : low.y));
        positions.push_back(static_cast<float>(i & 4 ? high.z : low.z));
    }
    return {name, gsl_Matrix(), positions, {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                                            2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5}};
}

/// A lumpy ball about `center`: closed, or with one triangle left out.
hst_Part Ball(const std::string& name, clr_Vec center, Random& random, bool isOpen) {
    constexpr int kRings = 5;
    constexpr int kSides = 7;
    std::vector<float> positions;
    std::vector<int> triangles;
    const auto add = [&](double polar, double around, double radius) {
        positions.push_back(
            static_cast<float>(center.x + radius * std::sin(polar) * std::cos(around)));
        positions.push_back(
            static_cast<float>(center.y + radius * std::sin(polar) * std::sin(around)));
        positions.push_back(static_cast<float>(center.z + radius * std::cos(polar)));
    };
    add(0, 0, 1);
    for (int ring = 1; ring <= kRings; ++ring) {
        for (int side = 0; side < kSides; ++side) {
            add(std::numbers::pi * ring / (kRings + 1), 2 * std::numbers::pi * side / kSides,
                Uniform(random, 0.8, 1.2));
        }
    }
    add(std::numbers::pi, 0, 1);
    const auto at = [](int ring, int side) {
        if (ring == 0) return 0;
        return ring > kRings ? kRings * kSides + 1 : (ring - 1) * kSides + side % kSides + 1;
    };
    for (int ring = 0; ring <= kRings; ++ring) {
        for (int side = 0; side < kSides; ++side) {
            if (ring < kRings) {
                triangles.insert(triangles.end(),
                                 {at(ring, side), at(ring + 1, side), at(ring + 1, side + 1)});
            }
            if (ring > 0) {
                triangles.insert(triangles.end(),
                                 {at(ring, side), at(ring + 1, side + 1), at(ring, side + 1)});
            }
        }
    }
    if (isOpen) triangles.resize(triangles.size() - 3);
    return {name, gsl_Matrix(), positions, triangles};
}

clr_Report Check(const std::vector<hst_Part>& parts, double gap, double touch,
                 const clr_IgnoredPairs& ignored = {}) {
    return clr_Check(parts, {gap, touch}, ignored, [](std::size_t, std::size_t) {});
}

clr_PairResult CheckPair(const hst_Part& first, const hst_Part& second, clr_Lengths lengths) {
    return clr_CheckPair(clr_Body(first), clr_Body(second), lengths);
}

/// Whether the point is a mix of the corners with weights of 0 to 1, up to rounding.
void ExpectOn(const clr_Triangle& t, const clr_Vec& p) {
    const double whole = clr_Length(clr_Cross(t[1] - t[0], t[2] - t[0]));
    double parts = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        parts += clr_Length(clr_Cross(t[i] - p, t[(i + 1) % 3] - p));
    }
    EXPECT_NEAR(parts, whole, 1e-12);
}

/// No point of the triangle lies farther along `direction` than `p`: the slab between the nearest
/// points of two convex sets holds no point of either, which proves them nearest.
void ExpectLast(const clr_Triangle& t, const clr_Vec& p, const clr_Vec& direction) {
    for (const clr_Vec& corner : t) EXPECT_LT(clr_Dot(direction, corner - p), 1e-12);
}

TEST(clr_TriangleDistance, IsReachedByPointsThatASlabParts) {
    Random random(1);
    for (int run = 0; run < 2000; ++run) {
        clr_Triangle a{RandomPoint(random), RandomPoint(random), RandomPoint(random)};
        clr_Triangle b{RandomPoint(random), RandomPoint(random), RandomPoint(random)};
        for (clr_Vec& corner : b) corner.x += run % 3;  // crossing ones, near ones, far ones
        if (run % 5 == 0) b[2] = b[1];                  // a segment
        if (run % 13 == 0) b[2] = b[0] + Uniform(random, -1, 2) * (b[1] - b[0]);  // up to rounding
        if (run % 7 == 0) b[1] = a[1];                                            // a common corner
        if (run % 11 == 0)
            for (clr_Vec& corner : b) corner.z = a[0].z = a[1].z = a[2].z = 0.5;
        clr_Nearest nearest;
        ASSERT_TRUE(clr_FindNearest(a, b, nearest));
        const clr_Vec between = nearest.onSecond - nearest.onFirst;
        EXPECT_EQ(clr_LengthSq(between), nearest.distanceSq);
        ExpectOn(a, nearest.onFirst);
        ExpectOn(b, nearest.onSecond);
        ExpectLast(a, nearest.onFirst, between);
        ExpectLast(b, nearest.onSecond, -1.0 * between);
        clr_Nearest swapped;
        ASSERT_TRUE(clr_FindNearest(b, a, swapped));
        EXPECT_NEAR(std::sqrt(swapped.distanceSq), std::sqrt(nearest.distanceSq), 1e-12);

        clr_Nearest bounded;
        bounded.distanceSq = 1.001 * nearest.distanceSq + 1e-20;
        EXPECT_TRUE(clr_FindNearest(a, b, bounded)) << "dropped for a bound farther away";

        clr_Nearest fromPoint;
        const clr_Vec p = RandomPoint(random, 2);
        ASSERT_TRUE(clr_FindNearest(p, a, fromPoint));
        ExpectOn(a, fromPoint.onSecond);
        ExpectLast(a, fromPoint.onSecond, p - fromPoint.onSecond);
    }
}

TEST(clr_TriangleDistance, LetsNoSegmentSlipThroughACommonEdge) {
    Random random(4);
    for (int run = 0; run < 2000; ++run) {
        const clr_Vec a = RandomPoint(random), b = RandomPoint(random);
        const clr_Vec on = a + Uniform(random, 0, 1) * (b - a);
        const clr_Vec along = RandomPoint(random);
        const clr_Vec side = RandomPoint(random);
        const clr_Triangle left{a, b, on + side}, right{b, a, on - 0.5 * side};
        EXPECT_TRUE(clr_FindCrossing(on - along, on + 0.7 * along, left) ||
                    clr_FindCrossing(on - along, on + 0.7 * along, right));
    }
}

using Triangles = std::vector<clr_Triangle>;

Triangles TrianglesOf(const hst_Part& part) {
    Triangles triangles;
    for (int i = 0; i < part.TriangleCount(); ++i) {
        clr_Triangle& triangle = triangles.emplace_back();
        for (std::size_t k = 0; k < 3; ++k) {
            const gsl_Point p = part.PlacedVertex(part.Triangle(i)[k]);
            triangle[k] = {p.GetX(), p.GetY(), p.GetZ()};
        }
    }
    return triangles;
}

/// The winding number by its definition.
double DirectWinding(const Triangles& part, const clr_Vec& p) {
    double angle = 0;
    for (const clr_Triangle& t : part) {
        const clr_Vec a = t[0] - p, b = t[1] - p, c = t[2] - p;
        const double la = clr_Length(a), lb = clr_Length(b), lc = clr_Length(c);
        angle += 2 * std::atan2(clr_Dot(a, clr_Cross(b, c)), la * lb * lc + clr_Dot(a, b) * lc +
                                                                 clr_Dot(b, c) * la +
                                                                 clr_Dot(c, a) * lb);
    }
    return angle / (4 * std::numbers::pi);
}

/// Kind and length by loops over everything.
std::pair<clr_Kind, double> BruteForce(const hst_Part& first, const hst_Part& second,
                                       clr_Lengths lengths) {
    const Triangles a = TrianglesOf(first);
    const Triangles b = TrianglesOf(second);
    clr_Nearest nearest;
    for (const clr_Triangle& mine : a) {
        for (const clr_Triangle& others : b) clr_FindNearest(mine, others, nearest);
    }
    const double distance = std::sqrt(nearest.distanceSq);
    double depth = 0;
    bool hasVertexInside = false;
    const auto deepen = [&](const clr_Vec& p, const Triangles& in, bool isVertex) {
        if (!(DirectWinding(in, p) > 0.5)) return;
        hasVertexInside |= isVertex;
        clr_Nearest onSurface;
        for (const clr_Triangle& triangle : in) clr_FindNearest(p, triangle, onSurface);
        depth = std::max(depth, std::sqrt(onSurface.distanceSq));
    };
    for (const auto& [of, in] : {std::pair(&a, &b), std::pair(&b, &a)}) {
        for (const clr_Triangle& triangle : *of) {
            for (std::size_t k = 0; k < 3; ++k) {
                deepen(triangle[k], *in, true);
                const clr_Vec along = triangle[(k + 1) % 3] - triangle[k];
                std::vector<double> stops = {0, 1};
                for (const clr_Triangle& other : *in) {
                    const auto stop = clr_FindCrossing(triangle[k], triangle[k] + along, other);
                    if (stop) stops.push_back(*stop);
                }
                std::sort(stops.begin(), stops.end());
                for (std::size_t s = 1; s < stops.size(); ++s) {
                    deepen(triangle[k] + 0.5 * (stops[s - 1] + stops[s]) * along, *in, false);
                }
            }
        }
    }
    if (distance <= lengths.touch) {
        if (depth > lengths.touch) return {clr_Kind::Crossing, depth};
        return {clr_Kind::Touching, distance};
    }
    if (hasVertexInside) return {clr_Kind::Enclosed, distance};
    if (distance < lengths.gap) return {clr_Kind::TooClose, distance};
    return {clr_Kind::Clear, 0};
}

TEST(clr_Check, AgreesWithLoopsOverEverything) {
    Random random(2);
    std::array<int, 5> seen{};
    for (int run = 0; run < 60; ++run) {
        const bool isOpen = run % 4 == 0;
        const hst_Part a = Ball("a", {}, random, isOpen);
        hst_Part b = Ball("b", RandomPoint(random, 1.7), random, run % 4 == 1);
        if (run % 6 == 0) {  // a small one, somewhere in or near the other
            std::vector<hst_Part> small = {Box("b", {-0.1, -0.1, -0.1}, {0.1, 0.1, 0.1})};
            clr_MoveParts(small,
                          {"b=0.2,0.1," + std::to_string(Uniform(random, -1, 1)) + ",30,40,50"});
            b = small[0];
        }
        const clr_Lengths lengths{0.3, 0.02};
        const clr_PairResult result = CheckPair(a, b, lengths);
        const auto [kind, length] = BruteForce(a, b, lengths);
        EXPECT_EQ(result.kind, kind) << run;
        EXPECT_NEAR(result.length, length, 1e-12) << run;
        EXPECT_NEAR(clr_Length(result.onFirst - result.onSecond), length, 1e-12) << run;
        const clr_PairResult swapped = CheckPair(b, a, lengths);
        EXPECT_EQ(swapped.kind, kind);
        EXPECT_NEAR(swapped.length, length, 1e-12);
        ++seen[static_cast<std::size_t>(kind)];
    }
    EXPECT_THAT(seen, testing::Each(testing::Gt(2))) << "the models miss a kind";
}

// Open bodies, slits, faces on each other, and facets of pins that cut those of their holes.
TEST(clr_Check, AgreesWithLoopsOverPartsOfTheEngine) {
    KTSOVU_REQUIRE_MODELS(models);
    std::vector<hst_Part> parts =
        imp_ReadModel(host_Engine(models), imp_ReadLimits{}, [](double) {});
    hst_MakeNamesUnique(parts);
    const auto named = [&](const std::string& name) -> const hst_Part& {
        return *std::ranges::find(parts, name, &hst_Part::Name);
    };
    const double touch = clr_DefaultTouch(parts);
    const clr_Lengths lengths{1e4 * touch, touch};
    constexpr std::array<std::pair<const char*, const char*>, 7> kPairs = {{
        {"body_14", "body_16"},
        {"body_15", "body_17"},
        {"body_15", "body_16"},
        {"body_18", "body_19"},
        {"body_24", "rod_123-699_0_Parts_1"},
        {"body_12", "body_15#3"},
        {"Lifter_123-923_0_Parts_1", "Lifter_123-923_0_Parts_1#2"},
    }};
    const std::size_t count = test_Rounds(10) < 10 ? 1 : kPairs.size();
    for (std::size_t i = 0; i < count; ++i) {
        const auto [first, second] = kPairs[i];
        const clr_PairResult result = CheckPair(named(first), named(second), lengths);
        const auto [kind, length] = BruteForce(named(first), named(second), lengths);
        EXPECT_EQ(result.kind, kind) << first << second;
        EXPECT_NEAR(result.length, length, 1e-9) << first << second;
    }
}

/// A cube with a strip around it left out, of the width `slit`.
hst_Part SlitBox(float slit) {
    const float low = 2 - slit / 2;
    const float high = 2 + slit / 2;
    std::vector<float> positions;
    for (const float z : {0.0f, low, high, 4.0f}) {
        positions.insert(positions.end(), {0, 0, z, 4, 0, z, 4, 4, z, 0, 4, z});
    }
    std::vector<int> triangles = {0, 2, 1, 0, 3, 2, 12, 13, 14, 12, 14, 15};
    for (const int ring : {0, 8}) {
        for (int i = 0; i < 4; ++i) {
            const int a = ring + i;
            const int b = ring + (i + 1) % 4;
            triangles.insert(triangles.end(), {a, b, b + 4, a, b + 4, a + 4});
        }
    }
    return {"slit", gsl_Matrix(), positions, triangles};
}

// The quick ways to tell a side are bounds over caps, balls and rays; the sum is the meaning.
TEST(clr_Body, TellsSidesAsTheSumOfSolidAnglesDoes) {
    Random random(5);
    hst_Part twice("twice", gsl_Matrix(), {0, 0, 0, 4, 0, 0, 0, 4, 0, 0, 0, 4},
                   {0, 2, 1, 0, 1, 3, 1, 2, 3, 0, 3, 2, 0, 2, 1, 0, 1, 3, 1, 2, 3, 0, 3, 2});
    int clearBalls = 0;
    int openBalls = 0;
    for (const hst_Part& part : {Ball("closed", {2, 2, 2}, random, false), twice, SlitBox(1e-4f),
                                 Ball("open", {2, 2, 2}, random, true), SlitBox(1.5f),
                                 Box("insideOut", {4, 4, 4}, {0, 0, 0})}) {
        const clr_Body body(part);
        const Triangles triangles = TrianglesOf(part);
        for (int run = 0; run < 300; ++run) {
            const clr_Vec point = clr_Vec{2, 2, 2} + RandomPoint(random, 2.5);
            const bool isInside =
                body.Box().Contains(point) && DirectWinding(triangles, point) > 0.5;
            EXPECT_EQ(clr_Body::IsInside(body.SideOf(point)), isInside) << part.Name();
            const double radius = Uniform(random, 0, 1);
            const auto side = body.SideOf(clr_Ball{point, radius});
            ++(side ? clearBalls : openBalls);
            for (int i = 0; side && i < 10; ++i) {
                const clr_Vec way = RandomPoint(random);
                const clr_Vec other = point + (radius / std::max(clr_Length(way), 1.0)) * way;
                EXPECT_EQ(body.SideOf(other), *side) << part.Name();
            }
        }
    }
    EXPECT_GT(clearBalls, 500);
    EXPECT_GT(openBalls, 500);
}

TEST(clr_Check, HoldsEveryBoundWithTheStatedStrictness) {
    const hst_Part cube = Box("a", {0, 0, 0}, {4, 4, 4});
    struct Case {
        const char* what;
        clr_Vec low, high;
        clr_Lengths lengths;
        clr_Kind kind;
        double length;
    };
    const Case cases[] = {
        {"at the gap", {6, 0, 0}, {8, 4, 4}, {2, 0}, clr_Kind::Clear, 0},
        {"below it", {6, 0, 0}, {8, 4, 4}, {2.5, 0}, clr_Kind::TooClose, 2},
        {"at the touch length", {6, 0, 0}, {8, 4, 4}, {9, 2}, clr_Kind::Touching, 2},
        {"faces in contact", {4, 0, 0}, {8, 4, 4}, {9, 0}, clr_Kind::Touching, 0},
        {"contact at a corner", {4, 4, 4}, {8, 8, 8}, {0, 0}, clr_Kind::Touching, 0},
        {"as deep as the touch length", {3, 1, 1}, {8, 3, 3}, {0, 1}, clr_Kind::Touching, 0},
        {"deeper", {3, 1, 1}, {8, 3, 3}, {0, 0.5}, clr_Kind::Crossing, 1},
        {"a bar right through", {-1, 1, 1}, {5, 3, 3}, {0, 0}, clr_Kind::Crossing, 1},
        {"enclosed", {1, 1, 1}, {3, 3, 3}, {0, 0.5}, clr_Kind::Enclosed, 1},
        {"enclosing", {-1, -1, -1}, {5, 5, 5}, {0, 0}, clr_Kind::Enclosed, 1},
        {"enclosed beyond the gap", {1, 1, 1}, {3, 3, 3}, {0.25, 0}, clr_Kind::Enclosed, 1},
        {"the same twice", {0, 0, 0}, {4, 4, 4}, {0, 0}, clr_Kind::Touching, 0},
    };
    for (const Case& c : cases) {
        const clr_PairResult result = CheckPair(cube, Box("b", c.low, c.high), c.lengths);
        EXPECT_EQ(result.kind, c.kind) << c.what;
        EXPECT_DOUBLE_EQ(result.length, c.length) << c.what;
    }
}

TEST(clr_Check, TellsNeitherTheOrderOfThePartsNorARigidMotion) {
    Random random(3);
    std::vector<hst_Part> parts;
    for (int i = 0; i < 12; ++i) {
        parts.push_back(Ball("p" + std::to_string(i), RandomPoint(random, 2.5), random, i == 5));
    }
    const clr_Report report = Check(parts, 0.4, 0.01);
    ASSERT_TRUE(report.HasFindings());
    EXPECT_EQ(report.pairsChecked, 66u);
    const auto lines = [](const clr_Report& r, const std::vector<hst_Part>& of) {
        std::vector<std::pair<std::string, double>> texts;
        for (const clr_Finding& f : r.pairs) {
            texts.emplace_back(std::to_string(static_cast<int>(f.result.kind)) + ' ' +
                                   of[f.first].Name() + ' ' + of[f.second].Name(),
                               f.result.length);
        }
        return texts;
    };
    std::vector<hst_Part> shuffled = parts;
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    EXPECT_EQ(lines(Check(shuffled, 0.4, 0.01), shuffled), lines(report, parts));

    std::vector<hst_Part> moved = parts;
    gsl_Matrix motion;
    motion.AxisRotation(gsl_Point(1, 2, 3), gsl_Vector(1, -2, 0.5), 1.1);
    for (hst_Part& part : moved) part.SetPlacement(part.Placement().GetConcatenated(motion));
    const auto expected = lines(report, parts);
    const auto found = lines(Check(moved, 0.4, 0.01), moved);
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i].first, expected[i].first);
        EXPECT_NEAR(found[i].second, expected[i].second, 1e-12);
    }

    std::vector<hst_Part> one = parts;
    clr_MoveParts(one, {"p3=0.3,0,0,10,20,30"});
    const auto without3 = [](auto texts) {
        std::erase_if(
            texts, [](const auto& t) { return (t.first + ' ').find(" p3 ") != std::string::npos; });
        return texts;
    };
    EXPECT_EQ(without3(lines(Check(one, 0.4, 0.01), one)), without3(expected));
    EXPECT_NE(lines(Check(one, 0.4, 0.01), one), expected);
    const clr_Report ignoring =
        Check(parts, 0.4, 0.01, clr_FindIgnoredPairs(parts, {"p1:p0", "p3:p4"}));
    EXPECT_EQ(ignoring.pairsChecked, 64u);
}

TEST(clr_Check, NamesPartsWithoutAreaAndWithoutAnInside) {
    gsl_Matrix turned;
    turned.AxisRotation(gsl_Point(), gsl_Vector(1, 2, 3), 0.3);
    hst_Part flat("flat", turned, {0, 0, 0, 1, 0, 0, 2, 0, 0}, {0, 1, 2});
    hst_Part sheet("sheet", gsl_Matrix(), {0, 0, 0, 4, 0, 0, 0, 4, 0, 4, 4, 4},
                   {0, 1, 2, 0, 3, 1, 0, 2, 3});
    const clr_Report report = Check({flat, sheet, Box("pin", {1, 1, -1}, {1.5, 1.5, 5})}, 0, 0.01);
    EXPECT_THAT(report.flat, testing::ElementsAre("flat"));
    EXPECT_THAT(report.unclear, testing::ElementsAre("sheet"));
    EXPECT_EQ(report.pairsChecked, 1u);
    const clr_Report insideOut =
        Check({Box("box", {4, 4, 4}, {0, 0, 0}), Box("pin", {1, 1, 1}, {2, 2, 2})}, 0, 0.01);
    EXPECT_THAT(insideOut.unclear, testing::ElementsAre("box"));
}

TEST(clr_Annotate, LabelsNoMoreThanHaveRoom) {
    const std::vector<hst_Part> parts = {Box("a", {}, {1, 1, 1}), Box("b", {}, {1, 1, 1})};
    clr_Report report;
    for (int i = 0; i < 20; ++i) {
        report.pairs.push_back({0, 1, {clr_Kind::Crossing, 1, {0.1 * i, 0.5, 0}, {}}});
    }
    const auto project = [](const gsl_Point& p) { return annC_Point2D{p.GetX(), p.GetY()}; };
    const annC_AnnotationContainer some = clr_Annotate(parts, report, 20, {900, 400, project});
    ASSERT_EQ(some.Size(), 16);
    std::set<double> heights;
    for (int i = 1; i <= 8; ++i) {
        const auto* text =
            dynamic_cast<const annC_Text*>(some.ConstGet(cow_String("label " + std::to_string(i))));
        ASSERT_NE(text, nullptr);
        const auto& at = dynamic_cast<const annC_ViewportAnchor&>(text->ConstGetAnchor());
        EXPECT_GT(at.GetY(), 30);
        EXPECT_LT(at.GetY(), 370);
        heights.insert(at.GetY());
    }
    EXPECT_EQ(heights.size(), 4u);
    EXPECT_EQ(clr_Annotate(parts, report, 3, {900, 400, project}).Size(), 6);
}

TEST(clr_Arrangement, TurnsAboutTheCentreOfTheBoxThenMoves) {
    std::vector<hst_Part> parts = {Box("a=b", {1, 2, 3}, {3, 6, 9})};
    clr_MoveParts(parts, {"a=b=10,20,30,90,0,90"});
    // x, y, z of the box have the lengths 2, 4, 6; about x: 2, 6, 4; then about z: 6, 2, 4.
    const gsl_BBox box = parts[0].PlacedBox();
    EXPECT_NEAR(box.Low().GetX(), 12 - 3, 1e-12);
    EXPECT_NEAR(box.High().GetY(), 24 + 1, 1e-12);
    EXPECT_NEAR(box.Low().GetZ(), 36 - 2, 1e-12);
    // The corner (3, 6, 9) lies (1, 2, 3) off the centre: about x (1, -3, 2), about z (3, 1, 2).
    EXPECT_TRUE(parts[0].PlacedVertex(7) == gsl_Point(15, 25, 38));
}

TEST(clr_Arrangement, RefusesWhatItCannotTell) {
    std::vector<hst_Part> parts = {Box("bolt", {}, {1, 1, 1}), Box("a:b", {}, {1, 1, 1}),
                                   Box("nut", {}, {1, 1, 1})};
    const auto causeOf = [&](auto call) -> std::string {
        try {
            call();
        } catch (const hst_Error& error) {
            return error.what();
        }
        return "";
    };
    const std::pair<std::vector<std::string>, const char*> moves[] = {
        {{"bolt"}, "--move bolt: is not PART=x,y,z[,rx,ry,rz]"},
        {{"bolts=1,2,3"},
         "--move bolts=1,2,3: there is no part 'bolts'; the nearest are 'bolt', 'nut', 'a:b'"},
        {{"bolt=1,2"}, "--move bolt=1,2: takes 3 or 6 finite numbers after the name"},
        {{"bolt=1,2,1e200"}, "--move bolt=1,2,1e200: takes 3 or 6 finite numbers after the name"},
        {{"bolt=1,2,nan"}, "--move bolt=1,2,nan: takes 3 or 6 finite numbers after the name"},
        {{"bolt=1,2,3,"}, "--move bolt=1,2,3,: takes 3 or 6 finite numbers after the name"},
        {{"nut=1,2,3", "nut=0,0,1"}, "--move nut=0,0,1: the part is moved twice"},
    };
    for (const auto& [texts, cause] : moves) {
        EXPECT_EQ(causeOf([&] { clr_MoveParts(parts, texts); }), cause);
    }
    EXPECT_TRUE(parts[2].Placement().IsIdentity());
    EXPECT_THAT(clr_FindIgnoredPairs(parts, {"a:b:nut", "bolt:a:b"}),
                testing::ElementsAre(testing::Pair("a:b", "nut"), testing::Pair("bolt", "a:b")));
    EXPECT_EQ(
        causeOf([&] { (void)clr_FindIgnoredPairs(parts, {"bolt:screw"}); }),
        "--ignore bolt:screw: there is no part 'screw'; the nearest are 'a:b', 'bolt', 'nut'");
    EXPECT_EQ(causeOf([&] { (void)clr_FindIgnoredPairs(parts, {"bolt"}); }),
              "--ignore bolt: is not PART:PART");
}

}  // namespace
