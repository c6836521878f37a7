#include "host/clearance/clr_Body.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

constexpr double kInside = 0.5;
constexpr double kClear = 0.25;  // as far as a winding number may be from a whole one

/// The triangles of a part at its placement.
std::vector<clr_Triangle> TrianglesOf(const hst_Part& part) {
    std::vector<clr_Vec> vertices;
    for (int i = 0; i < part.VertexCount(); ++i) {
        const gsl_Point placed = part.PlacedVertex(i);
        vertices.push_back({placed.GetX(), placed.GetY(), placed.GetZ()});
    }
    std::vector<clr_Triangle> triangles;
    for (int i = 0; i < part.TriangleCount(); ++i) {
        const auto [a, b, c] = part.Triangle(i);
        triangles.push_back({vertices[static_cast<std::size_t>(a)],
                             vertices[static_cast<std::size_t>(b)],
                             vertices[static_cast<std::size_t>(c)]});
    }
    return triangles;
}

/// The things of the triangles below a node, of which `first` names the first of each triangle.
template <class Thing>
std::span<const Thing> Below(const clr_TriangleTree::Node& node, const std::vector<Thing>& things,
                             const std::vector<int>& first) {
    const auto of = [&](int triangle) {
        return things.data() + first[static_cast<std::size_t>(triangle)];
    };
    return {of(node.first), of(node.first + node.count)};
}

}  // namespace

clr_Body::Mesh::Mesh(const hst_Part& part, const clr_TriangleTree& tree) {
    std::vector<int> numbers(static_cast<std::size_t>(part.VertexCount()), -1);
    for (int i = 0; i < part.TriangleCount(); ++i) {
        clr_Winding::Corners triangle = part.Triangle(tree.Original(i));
        firstVertex.push_back(static_cast<int>(vertices.size()));
        for (std::size_t k = 0; k < 3; ++k) {
            int& number = numbers[static_cast<std::size_t>(triangle[k])];
            if (number < 0) {
                number = static_cast<int>(vertices.size());
                vertices.push_back(tree.Triangles()[static_cast<std::size_t>(i)][k]);
            }
            triangle[k] = number;
        }
        corners.push_back(triangle);
    }
    firstVertex.push_back(static_cast<int>(vertices.size()));
}

clr_Body::Edges::Edges(const std::vector<clr_Winding::Corners>& corners) {
    struct Entry {
        Edge edge;
        std::size_t triangle;
    };
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        for (std::size_t k = 0; k < 3; ++k) {
            entries.push_back({std::minmax({corners[i][k], corners[i][(k + 1) % 3]}), i});
        }
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.edge, a.triangle) < std::tie(b.edge, b.triangle);
    });
    const auto end = std::unique(entries.begin(), entries.end(),
                                 [](const Entry& a, const Entry& b) { return a.edge == b.edge; });
    std::sort(entries.begin(), end, [](const Entry& a, const Entry& b) {
        return std::tie(a.triangle, a.edge) < std::tie(b.triangle, b.edge);
    });
    for (auto entry = entries.begin(); entry != end; ++entry) {
        first.resize(entry->triangle + 1, static_cast<int>(ends.size()));
        ends.push_back(entry->edge);
    }
    first.resize(corners.size() + 1, static_cast<int>(ends.size()));
}

clr_Body::clr_Body(const hst_Part& part)
    : tree(TrianglesOf(part)),
      mesh(part, tree),
      edges(mesh.corners),
      winding(tree, mesh.corners, mesh.vertices) {}

bool clr_Body::HasArea(const hst_Part& part) {
    const std::vector<clr_Triangle> triangles = TrianglesOf(part);
    return std::any_of(triangles.begin(), triangles.end(), clr_HasArea);
}

std::span<const clr_Vec> clr_Body::VerticesOf(const clr_TriangleTree::Node& node) const {
    return Below(node, mesh.vertices, mesh.firstVertex);
}

std::span<const clr_Body::Edge> clr_Body::EdgesOf(const clr_TriangleTree::Node& node) const {
    return Below(node, edges.ends, edges.first);
}

clr_Body::Side clr_Body::SideOf(const clr_Vec& point) const {
    if (!Box().Contains(point)) return Side::Outside;
    if (const auto side = ClearSideOf({point, 0})) return *side;
    const double number = winding.At(point);
    const bool isClear = std::abs(number - std::round(number)) <= kClear && number > -kInside;
    if (number > kInside) return isClear ? Side::Inside : Side::UnclearInside;
    return isClear ? Side::Outside : Side::UnclearOutside;
}

std::optional<clr_Body::Side> clr_Body::SideOf(const clr_Ball& ball) const {
    clr_Nearest nearest;
    nearest.distanceSq = ball.radius * ball.radius;
    if (tree.FindNearest(ball.center, nearest.distanceSq, nearest)) return std::nullopt;
    const std::optional<Side> side = ClearSideOf(ball);
    // What is seen from outside of the box is outside, whatever the winding number of open layers.
    return side == Side::Inside && !Box().Contains(ball) ? std::nullopt : side;
}

std::optional<clr_Body::Side> clr_Body::ClearSideOf(const clr_Ball& ball) const {
    const std::optional<int> number = winding.WholeAt(ball, kClear);
    if (!number || *number < 0) return std::nullopt;
    return *number > 0 ? Side::Inside : Side::Outside;
}
