#include "host/clearance/clr_Winding.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

/// A sum of angles that are given as complex numbers: these are multiplied, which takes a fraction
/// of the time of as many arc tangents. Each is less than half a turn, so that a product of two
/// upper or two lower numbers which changes the half plane tells a turn.
class clr_Winding::AngleSum {
  public:
    /// Adds half the signed solid angle of a triangle as seen from the origin (A. van Oosterom and
    /// J. Strackee, 1983); one that is seen edge-on or has no area has none.
    void AddTriangle(const clr_Vec& a, const clr_Vec& b, const clr_Vec& c) noexcept {
        const double volume = clr_Dot(a, clr_Cross(b, c));
        if (volume == 0) return;
        const double la = clr_Length(a);
        const double lb = clr_Length(b);
        const double lc = clr_Length(c);
        Add(la * lb * lc + clr_Dot(a, b) * lc + clr_Dot(b, c) * la + clr_Dot(c, a) * lb, volume);
    }
    /// The sum over 2 pi.
    [[nodiscard]] double Turns() const noexcept {
        return turns + std::atan2(imaginary, real) / (2 * std::numbers::pi);
    }

  private:
    void Add(double re, double im) noexcept {
        const double newReal = real * re - imaginary * im;
        const double newImaginary = real * im + imaginary * re + 0.0;  // no negative zero
        if (imaginary >= 0 && im >= 0 && newImaginary < 0) ++turns;
        if (imaginary < 0 && im < 0 && newImaginary >= 0) --turns;
        const double size = std::max(std::abs(newReal), std::abs(newImaginary));
        real = newReal / size;
        imaginary = newImaginary / size;
    }

    double real = 1;
    double imaginary = 0;
    int turns = 0;
};

clr_Winding::clr_Winding(const clr_TriangleTree& surface, const std::vector<Corners>& corners,
                         const std::vector<clr_Vec>& positions)
    : tree(surface),
      vertices(positions),
      fans(surface.Nodes().size()),
      caps(StepsOf(CloseNodes(0, corners)), positions) {}

std::vector<clr_SeamCaps::Step> clr_Winding::StepsOf(const Boundary& boundary) {
    std::vector<clr_SeamCaps::Step> steps;
    for (const Edge& edge : boundary) {
        const clr_SeamCaps::Step step = edge.count > 0 ? clr_SeamCaps::Step(edge.to, edge.from)
                                                       : clr_SeamCaps::Step(edge.from, edge.to);
        steps.insert(steps.end(), static_cast<std::size_t>(std::abs(edge.count)), step);
    }
    return steps;
}

clr_Winding::Boundary clr_Winding::CloseNodes(int node, const std::vector<Corners>& corners) {
    const clr_TriangleTree::Node& here = tree.Nodes()[static_cast<std::size_t>(node)];
    Boundary boundary = here.IsLeaf()
                            ? BoundaryOfLeaf(here, corners)
                            : Merge(CloseNodes(node + 1, corners), CloseNodes(here.right, corners));
    if (static_cast<int>(boundary.size()) < here.count) {
        Fan& fan = fans[static_cast<std::size_t>(node)];
        fan = {static_cast<int>(edges.size()), static_cast<int>(boundary.size())};
        edges.insert(edges.end(), boundary.begin(), boundary.end());
    }
    return boundary;
}

clr_Winding::Boundary clr_Winding::BoundaryOfLeaf(const clr_TriangleTree::Node& leaf,
                                                  const std::vector<Corners>& corners) const {
    Boundary boundary;
    for (int i = leaf.first; i < leaf.first + leaf.count; ++i) {
        const Corners& corner = corners[static_cast<std::size_t>(i)];
        for (std::size_t k = 0; k < 3; ++k) {
            const int from = corner[k];
            const int to = corner[(k + 1) % 3];
            const Edge edge = from < to ? Edge{from, to, 1} : Edge{to, from, -1};
            if (from != to) boundary = Merge(boundary, {edge});
        }
    }
    return boundary;
}

clr_Winding::Boundary clr_Winding::Merge(const Boundary& a, const Boundary& b) {
    const auto isBefore = [](const Edge& x, const Edge& y) {
        return x.from != y.from ? x.from < y.from : x.to < y.to;
    };
    Boundary merged;
    merged.reserve(a.size() + b.size());
    auto i = a.begin();
    auto j = b.begin();
    while (i != a.end() && j != b.end()) {
        if (isBefore(*i, *j)) {
            merged.push_back(*i++);
        } else if (isBefore(*j, *i)) {
            merged.push_back(*j++);
        } else {
            const int count = i->count + j->count;
            if (count != 0) merged.push_back({i->from, i->to, count});
            ++i;
            ++j;
        }
    }
    merged.insert(merged.end(), i, a.end());
    merged.insert(merged.end(), j, b.end());
    return merged;
}

void clr_Winding::AddFan(const Fan& fan, const clr_Vec& point, AngleSum& sum) const {
    if (fan.count == 0) return;
    const auto seen = [&](int vertex) {
        return vertices[static_cast<std::size_t>(vertex)] - point;
    };
    const auto begin = edges.begin() + fan.first;
    const int hub = begin->from;
    const clr_Vec fromHub = seen(hub);
    for (auto edge = begin; edge != begin + fan.count; ++edge) {
        if (edge->from == hub || edge->to == hub) continue;
        const clr_Vec from = seen(edge->from);
        const clr_Vec to = seen(edge->to);
        for (int i = 0; i < edge->count; ++i) sum.AddTriangle(fromHub, from, to);
        for (int i = 0; i > edge->count; --i) sum.AddTriangle(fromHub, to, from);
    }
}

double clr_Winding::At(const clr_Vec& point) const {
    AngleSum sum;
    const auto& nodes = tree.Nodes();
    for (std::size_t index = 0; index < nodes.size();) {
        const clr_TriangleTree::Node& node = nodes[index];
        const bool takesFan = fans[index].count >= 0 && !node.box.Contains(point);
        if (takesFan) {
            AddFan(fans[index], point, sum);
        } else if (node.IsLeaf()) {
            AddLeaf(node, point, sum);
        }
        index = takesFan ? static_cast<std::size_t>(node.after) : index + 1;
    }
    return sum.Turns();
}

std::optional<int> clr_Winding::WholeAt(const clr_Ball& ball, double mostFraction) const {
    if (!(caps.MostWinding(ball) <= mostFraction)) return std::nullopt;
    const auto number = tree.CountPassings(ball.center);
    const auto ofCaps = caps.CountPassings(ball.center);
    if (number && ofCaps) return *number + *ofCaps;
    const double sum = At(ball.center);
    if (std::isnan(sum)) return std::nullopt;  // of coordinates whose products overflow
    return static_cast<int>(std::round(sum));
}

void clr_Winding::AddLeaf(const clr_TriangleTree::Node& leaf, const clr_Vec& point,
                          AngleSum& sum) const {
    for (int i = leaf.first; i < leaf.first + leaf.count; ++i) {
        const clr_Triangle& t = tree.Triangles()[static_cast<std::size_t>(i)];
        sum.AddTriangle(t[0] - point, t[1] - point, t[2] - point);
    }
}
