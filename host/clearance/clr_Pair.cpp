#include "host/clearance/clr_Pair.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace {

/// A point of one surface inside the other part, and the nearest point of that part's surface.
struct Deepest {
    double depth = 0;
    clr_Vec inside;
    clr_Vec onSurface;
};

/// Looks for the deepest point of a surface within a body. Follows the tree of the surface, so that
/// a stretch outside the body, or no deeper than what is found, is dropped whole, however fine its
/// triangles are, and one that is all inside is asked for its side once.
class DepthSearch {
  public:
    /// Only points deeper than `found` holds count.
    DepthSearch(const clr_Body& searched, const clr_Body& body, const Deepest& found)
        : surface(searched), within(body), deepest(found) {
        TakeBelow(0, std::nullopt);
    }

    [[nodiscard]] const Deepest& Found() const noexcept { return deepest; }
    [[nodiscard]] bool IsUnclear() const noexcept { return isUnclear; }

  private:
    /// The points below a node of the surface's tree, whose side is known, or not.
    void TakeBelow(int index, std::optional<clr_Body::Side> side) {
        const clr_TriangleTree::Node& node = surface.Tree().At(index);
        if (node.box.DistanceSq(within.Box()) > 0) return;
        const clr_Ball ball = node.box.CircumscribedBall();
        if (IsNoDeeper(ball)) return;
        if (!side) side = within.SideOf(ball);
        if (side == clr_Body::Side::Outside) return;
        if (!node.IsLeaf()) {
            TakeBelow(clr_TriangleTree::LeftOf(index), side);
            TakeBelow(node.right, side);
            return;
        }
        for (const clr_Vec& vertex : surface.VerticesOf(node)) Take(vertex, side);
        for (const auto& [from, to] : surface.EdgesOf(node)) {
            TakeEdge(surface.Vertex(from), surface.Vertex(to), side);
        }
    }

    /// Whether the body's surface comes so near the centre that no point of the ball is deeper than
    /// what is found.
    [[nodiscard]] bool IsNoDeeper(const clr_Ball& ball) const {
        const double room = deepest.depth - ball.radius;
        if (!(room > 0)) return false;
        clr_Nearest nearest;
        nearest.distanceSq = room * room;
        return within.Tree().FindNearest(ball.center, nearest.distanceSq, nearest);
    }

    void Take(const clr_Vec& point, std::optional<clr_Body::Side> side) {
        if (!within.Box().Contains(point)) return;
        clr_Nearest nearest;
        within.Tree().FindNearest(point, deepest.depth * deepest.depth, nearest);
        const double depth = std::sqrt(nearest.distanceSq);
        if (!(depth > deepest.depth)) return;
        if (!side) side = within.SideOf(point);
        isUnclear |= clr_Body::IsUnclear(*side);
        if (clr_Body::IsInside(*side)) deepest = {depth, point, nearest.onSecond};
    }

    /// The middle of each stretch between two crossings of the surface.
    void TakeEdge(const clr_Vec& from, const clr_Vec& to, std::optional<clr_Body::Side> side) {
        clr_Box box;
        box.Add(from);
        box.Add(to);
        if (box.DistanceSq(within.Box()) > 0) return;
        parameters.assign({0, 1});
        within.Tree().AddCrossings(from, to, parameters);
        std::sort(parameters.begin(), parameters.end());
        for (std::size_t i = 1; i < parameters.size(); ++i) {
            if (parameters[i] > parameters[i - 1]) {
                Take(from + 0.5 * (parameters[i - 1] + parameters[i]) * (to - from), side);
            }
        }
    }

    const clr_Body& surface;
    const clr_Body& within;
    Deepest deepest;
    bool isUnclear = false;
    std::vector<double> parameters;
};

/// Whether a vertex below a node of the surface's tree lies inside `within`, whose surface none
/// comes near.
bool HasVertexWithin(const clr_Body& surface, int index, const clr_Body& within, bool& isUnclear) {
    const clr_TriangleTree::Node& node = surface.Tree().At(index);
    if (node.box.DistanceSq(within.Box()) > 0) return false;
    if (const auto side = within.SideOf(node.box.CircumscribedBall())) {
        return *side == clr_Body::Side::Inside;
    }
    if (!node.IsLeaf()) {
        return HasVertexWithin(surface, clr_TriangleTree::LeftOf(index), within, isUnclear) ||
               HasVertexWithin(surface, node.right, within, isUnclear);
    }
    return std::ranges::any_of(surface.VerticesOf(node), [&](const clr_Vec& vertex) {
        const clr_Body::Side side = within.SideOf(vertex);
        isUnclear |= clr_Body::IsUnclear(side);
        return clr_Body::IsInside(side);
    });
}

bool IsEnclosed(const clr_Body& first, const clr_Body& second, clr_PairResult& result) {
    return HasVertexWithin(first, 0, second, result.secondUnclear) ||
           HasVertexWithin(second, 0, first, result.firstUnclear);
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
    const DepthSearch inSecond(first, second, {touch, {}, {}});
    const DepthSearch inFirst(second, first, inSecond.Found());
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
