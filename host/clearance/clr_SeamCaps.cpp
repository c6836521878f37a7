#include "host/clearance/clr_SeamCaps.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <queue>
#include <tuple>

namespace {

double AreaOf(const clr_Triangle& t) {
    return 0.5 * clr_Length(clr_Cross(t[1] - t[0], t[2] - t[0]));
}

/// An upper bound of the winding number of a surface of this area, no point of which is nearer.
double MostWindingOf(double area, double distance) {
    if (!(distance > 0)) return std::numeric_limits<double>::infinity();
    return area / (4 * std::numbers::pi * distance * distance);
}

/// The same of a triangle. It lies in a strip along its longest side, so the integral along that of
/// width over r^2, with r^2 at least half of distance^2 + length^2, is a bound, too.
double MostWindingOf(const clr_Triangle& t, double distance) {
    const double area = AreaOf(t);
    const double longest = std::sqrt(std::max(
        {clr_LengthSq(t[1] - t[0]), clr_LengthSq(t[2] - t[1]), clr_LengthSq(t[0] - t[2])}));
    const double width = 2 * area / longest;
    const double most = MostWindingOf(area, distance);
    return distance > 0 ? std::min(most, width / (2 * distance)) : most;
}

}  // namespace

clr_SeamCaps::clr_SeamCaps(const std::vector<Step>& seams, const std::vector<clr_Vec>& vertices) {
    for (const Loop& loop : Joined(LoopsOf(seams), vertices)) Cap(loop, vertices);
    if (caps.empty()) return;
    tree.emplace(caps);
    for (const clr_TriangleTree::Node& node : tree->Nodes()) {
        double area = 0;
        for (int i = node.first; i < node.first + node.count; ++i) {
            area += AreaOf(tree->Triangles()[static_cast<std::size_t>(i)]);
        }
        areas.push_back(area);
    }
}

std::vector<clr_SeamCaps::Loop> clr_SeamCaps::LoopsOf(const std::vector<Step>& seams) {
    std::multimap<int, int> steps(seams.begin(), seams.end());
    std::vector<Loop> loops;
    while (!steps.empty()) {
        Loop loop;
        for (auto step = steps.begin(); step != steps.end(); step = steps.find(loop.back())) {
            loop.push_back(step->second);
            steps.erase(step);
        }
        loops.push_back(std::move(loop));
    }
    return loops;
}

std::vector<clr_SeamCaps::Loop> clr_SeamCaps::Joined(std::vector<Loop> loops,
                                                     const std::vector<clr_Vec>& vertices) {
    constexpr double kNear = 0.02;  // of the length of the loop
    // Every loop is held against every vertex: well under a second. A soup of loose triangles would
    // take minutes; its loops keep caps of their own, which bound less but as truly.
    constexpr double kMostComparisons = 3e7;
    double vertexCount = 0;
    for (const Loop& loop : loops) vertexCount += static_cast<double>(loop.size());
    if (static_cast<double>(loops.size()) * vertexCount > kMostComparisons) return loops;
    const auto at = [&](int vertex) { return vertices[static_cast<std::size_t>(vertex)]; };
    std::vector<Loop> joined;
    while (!loops.empty()) {
        Loop loop = std::move(loops.back());
        loops.pop_back();
        double length = clr_Length(at(loop.front()) - at(loop.back()));
        for (std::size_t i = 1; i < loop.size(); ++i) {
            length += clr_Length(at(loop[i]) - at(loop[i - 1]));
        }
        double nearestSq = kNear * length * kNear * length;
        Loop* nearest = nullptr;
        std::ptrdiff_t place = 0;
        for (Loop& other : loops) {
            for (auto vertex = other.begin(); vertex != other.end(); ++vertex) {
                const double distanceSq = clr_LengthSq(at(*vertex) - at(loop.front()));
                if (!(distanceSq < nearestSq)) continue;
                nearestSq = distanceSq;
                nearest = &other;
                place = vertex - other.begin();
            }
        }
        if (!nearest) {
            joined.push_back(std::move(loop));
            continue;
        }
        std::rotate(nearest->begin(), nearest->begin() + place, nearest->end());
        nearest->push_back(nearest->front());
        nearest->insert(nearest->end(), loop.begin(), loop.end());
        nearest->push_back(loop.front());
    }
    return joined;
}

void clr_SeamCaps::Cap(const Loop& loop, const std::vector<clr_Vec>& vertices) {
    const std::size_t count = loop.size();
    std::vector<std::size_t> before(count);
    std::vector<std::size_t> behind(count);
    std::vector<int> version(count, 0);
    using Ear = std::tuple<double, std::size_t, int>;  // area, place in the loop, its version
    std::priority_queue<Ear, std::vector<Ear>, std::greater<>> ears;
    const auto earAt = [&](std::size_t i) {
        const auto at = [&](std::size_t place) {
            return vertices[static_cast<std::size_t>(loop[place])];
        };
        return clr_Triangle{at(before[i]), at(i), at(behind[i])};
    };
    const auto offer = [&](std::size_t i) { ears.emplace(AreaOf(earAt(i)), i, ++version[i]); };
    for (std::size_t i = 0; i < count; ++i) {
        before[i] = (i + count - 1) % count;
        behind[i] = (i + 1) % count;
    }
    for (std::size_t i = 0; i < count; ++i) offer(i);
    for (std::size_t left = count; left > 2;) {
        const auto [area, i, offered] = ears.top();
        ears.pop();
        if (offered != version[i]) continue;
        if (area > 0) caps.push_back(earAt(i));
        behind[before[i]] = behind[i];
        before[behind[i]] = before[i];
        ++version[i];
        offer(before[i]);
        offer(behind[i]);
        --left;
    }
}

double clr_SeamCaps::MostWinding(const clr_Ball& ball) const {
    return tree ? MostWinding(0, ball) : 0;
}

double clr_SeamCaps::MostWinding(int index, const clr_Ball& ball) const {
    constexpr double kLittle = 1e-4;
    const clr_TriangleTree::Node& node = tree->At(index);
    const double most = MostWindingOf(areas[static_cast<std::size_t>(index)],
                                      std::sqrt(node.box.DistanceSq(ball.center)) - ball.radius);
    if (most <= kLittle) return most;
    if (!node.IsLeaf()) {
        return MostWinding(clr_TriangleTree::LeftOf(index), ball) + MostWinding(node.right, ball);
    }
    double sum = 0;
    for (int i = node.first; i < node.first + node.count; ++i) {
        const clr_Triangle& cap = tree->Triangles()[static_cast<std::size_t>(i)];
        clr_Nearest nearest;
        clr_FindNearest(ball.center, cap, nearest);
        sum += MostWindingOf(cap, std::sqrt(nearest.distanceSq) - ball.radius);
    }
    return sum;
}
