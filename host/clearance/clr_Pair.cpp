#include "host/clearance/clr_Pair.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// A point of one surface inside the other part, and the nearest point of that part's surface.
struct Deepest {
    double depth = 0;
    clr_Vec inside;
    clr_Vec onSurface;
};

/// Looks for the deepest point of a surface within a body.
class DepthSearch {
  public:
    /// Only points deeper than `found` holds count.
    DepthSearch(const clr_Body& body, const Deepest& found) : within(body), deepest(found) {}

    void Take(const clr_Body& surface) {
        for (const clr_Vec& vertex : surface.Vertices()) Take(vertex);
        for (const auto& [from, to] : surface.Edges()) {
            TakeEdge(surface.Vertices()[static_cast<std::size_t>(from)],
                     surface.Vertices()[static_cast<std::size_t>(to)]);
        }
    }
    [[nodiscard]] const Deepest& Found() const noexcept { return deepest; }
    [[nodiscard]] bool IsUnclear() const noexcept { return isUnclear; }

  private:
    void Take(const clr_Vec& point) {
        if (!within.Box().Contains(point)) return;
        clr_Nearest nearest;
        within.Tree().FindNearest(point, deepest.depth * deepest.depth, nearest);
        const double depth = std::sqrt(nearest.distanceSq);
        if (!(depth > deepest.depth)) return;
        const clr_Body::Side side = within.SideOf(point);
        isUnclear |= clr_Body::IsUnclear(side);
        if (clr_Body::IsInside(side)) deepest = {depth, point, nearest.onSecond};
    }

    /// The middle of each stretch between two crossings of the surface.
    void TakeEdge(const clr_Vec& from, const clr_Vec& to) {
        clr_Box box;
        box.Add(from);
        box.Add(to);
        if (box.DistanceSq(within.Box()) > 0) return;
        parameters.assign({0, 1});
        within.Tree().AddCrossings(from, to, parameters);
        std::sort(parameters.begin(), parameters.end());
        for (std::size_t i = 1; i < parameters.size(); ++i) {
            if (parameters[i] > parameters[i - 1]) {
                Take(from + 0.5 * (parameters[i - 1] + parameters[i]) * (to - from));
            }
        }
    }

    const clr_Body& within;
    Deepest deepest;
    bool isUnclear = false;
    std::vector<double> parameters;
};

/// Whether a vertex of `surface` lies inside `within`, whose surface none comes near.
bool HasVertexWithin(const clr_Body& surface, const clr_Body& within, bool& isUnclear) {
    return std::any_of(surface.Vertices().begin(), surface.Vertices().end(),
                       [&](const clr_Vec& vertex) {
                           const clr_Body::Side side = within.SideOf(vertex);
                           isUnclear |= clr_Body::IsUnclear(side);
                           return clr_Body::IsInside(side);
                       });
}

bool IsEnclosed(const clr_Body& first, const clr_Body& second, clr_PairResult& result) {
    return HasVertexWithin(first, second, result.secondUnclear) ||
           HasVertexWithin(second, first, result.firstUnclear);
}

/// The nearest points that are no farther apart than `reach`; an infinite distance when none are.
clr_Nearest NearestPoints(const clr_Body& first, const clr_Body& second, double reach) {
    constexpr double kRoom = 1 + 1e-12;  // squares are rounded, and the reach itself is found too
    clr_Nearest nearest;
    nearest.distanceSq = std::max(kRoom * reach * reach, std::numeric_limits<double>::min());
    if (!first.Tree().FindNearest(second.Tree(), nearest)) {
        nearest.distanceSq = std::numeric_limits<double>::infinity();
    }
    return nearest;
}

void SetLength(clr_Kind kind, const clr_Nearest& nearest, clr_PairResult& result) {
    result.kind = kind;
    result.length = std::sqrt(nearest.distanceSq);
    result.onFirst = nearest.onFirst;
    result.onSecond = nearest.onSecond;
}

/// Of surfaces that meet: crossing when a point lies deeper than the touch length.
bool SetDepth(const clr_Body& first, const clr_Body& second, double touch, clr_PairResult& result) {
    DepthSearch inSecond(second, {touch, {}, {}});
    inSecond.Take(first);
    DepthSearch inFirst(first, inSecond.Found());
    inFirst.Take(second);
    result.secondUnclear = inSecond.IsUnclear();
    result.firstUnclear = inFirst.IsUnclear();
    const Deepest& deepest = inFirst.Found();
    if (!(deepest.depth > touch)) return false;
    const bool firstReaches = deepest.depth == inSecond.Found().depth;
    result.kind = clr_Kind::Crossing;
    result.length = deepest.depth;
    result.onFirst = firstReaches ? deepest.inside : deepest.onSurface;
    result.onSecond = firstReaches ? deepest.onSurface : deepest.inside;
    return true;
}

}  // namespace

clr_PairResult clr_CheckPair(const clr_Body& first, const clr_Body& second,
                             const clr_Lengths& lengths) {
    clr_PairResult result;
    const bool boxesMeet = first.Box().DistanceSq(second.Box()) == 0;
    clr_Nearest nearest = NearestPoints(first, second, std::max(lengths.gap, lengths.touch));
    const double distance = std::sqrt(nearest.distanceSq);
    if (distance <= lengths.touch) {
        if (!SetDepth(first, second, lengths.touch, result)) {
            SetLength(clr_Kind::Touching, nearest, result);
        }
    } else if (boxesMeet && IsEnclosed(first, second, result)) {
        if (std::isinf(distance)) {
            nearest = NearestPoints(first, second, std::numeric_limits<double>::infinity());
        }
        SetLength(clr_Kind::Enclosed, nearest, result);
    } else if (distance < lengths.gap) {
        SetLength(clr_Kind::TooClose, nearest, result);
    }
    return result;
}
