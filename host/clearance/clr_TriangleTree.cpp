#include "host/clearance/clr_TriangleTree.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace {

constexpr int kStackDepth = 128;  // a median tree over 2^31 triangles is 32 deep, pairs go twice

/// What is still to be visited, on the stack of the thread.
template <class Entry>
class Pending {
  public:
    void Push(const Entry& entry) noexcept { entries[size++] = entry; }
    Entry Pop() noexcept { return entries[--size]; }
    [[nodiscard]] bool IsEmpty() const noexcept { return size == 0; }

  private:
    std::array<Entry, kStackDepth> entries;
    std::size_t size = 0;
};

clr_Box BoxOf(const clr_Triangle& triangle) noexcept {
    clr_Box box;
    for (const clr_Vec& corner : triangle) box.Add(corner);
    return box;
}

double Coordinate(const clr_Vec& p, int axis) noexcept {
    return axis == 0 ? p.x : axis == 1 ? p.y : p.z;
}

int LongestAxis(const clr_Box& box) noexcept {
    const clr_Vec size = box.high - box.low;
    if (size.x >= size.y && size.x >= size.z) return 0;
    return size.y >= size.z ? 1 : 2;
}

/// A ray in a direction along which hardly a mesh has edges.
class Ray {
  public:
    explicit Ray(const clr_Vec& from) noexcept : start(from) {}

    [[nodiscard]] std::optional<int> PassingOf(const clr_Triangle& triangle) const {
        return clr_PassingOf(start, kDirection, triangle);
    }
    /// Whether the ray comes into the box, with room for rounding.
    [[nodiscard]] bool Meets(const clr_Box& box) const noexcept {
        constexpr double kRoom = 1 + 1e-14;
        const double enters =
            std::max({(box.low.x - start.x) / kDirection.x, (box.low.y - start.y) / kDirection.y,
                      (box.low.z - start.z) / kDirection.z, 0.0});
        const double leaves =
            std::min({(box.high.x - start.x) / kDirection.x, (box.high.y - start.y) / kDirection.y,
                      (box.high.z - start.z) / kDirection.z});
        return leaves >= 0 && enters <= kRoom * leaves;
    }

  private:
    static constexpr clr_Vec kDirection{0.3617, 0.8241, 0.4359};  // all upward

    clr_Vec start;
};

}  // namespace

clr_TriangleTree::clr_TriangleTree(const std::vector<clr_Triangle>& source) {
    const int count = static_cast<int>(source.size());
    order.resize(source.size());
    std::iota(order.begin(), order.end(), 0);
    std::vector<clr_Vec> centers(source.size());
    std::transform(source.begin(), source.end(), centers.begin(),
                   [](const clr_Triangle& t) { return (1.0 / 3.0) * (t[0] + t[1] + t[2]); });
    nodes.reserve(source.size());
    Build(source, centers, 0, count);
    triangles.reserve(source.size());
    for (const int original : order)
        triangles.push_back(source[static_cast<std::size_t>(original)]);
}

int clr_TriangleTree::Build(const std::vector<clr_Triangle>& source,
                            const std::vector<clr_Vec>& centers, int first, int count) {
    const int self = static_cast<int>(nodes.size());
    Node node;
    node.first = first;
    node.count = count;
    clr_Box spread;
    const auto begin = order.begin() + first;
    const auto end = begin + count;
    for (auto it = begin; it != end; ++it) {
        node.box.Add(BoxOf(source[static_cast<std::size_t>(*it)]));
        spread.Add(centers[static_cast<std::size_t>(*it)]);
    }
    node.after = self + 1;
    nodes.push_back(node);
    if (count <= LEAF_TRIANGLES) return self;

    const int axis = LongestAxis(spread);
    const int half = count / 2;
    std::nth_element(begin, begin + half, end, [&](int a, int b) {
        const double ca = Coordinate(centers[static_cast<std::size_t>(a)], axis);
        const double cb = Coordinate(centers[static_cast<std::size_t>(b)], axis);
        return ca != cb ? ca < cb : a < b;  // one order, whatever the library's algorithm
    });
    Build(source, centers, first, half);
    const int right = Build(source, centers, first + half, count - half);
    Node& built = nodes[static_cast<std::size_t>(self)];
    built.right = right;
    built.after = static_cast<int>(nodes.size());
    return self;
}

bool clr_TriangleTree::PairLeaves(const Node& mine, const clr_TriangleTree& other,
                                  const Node& others, clr_Nearest& nearest) const {
    std::array<clr_Box, LEAF_TRIANGLES> otherBoxes;
    for (int j = 0; j < others.count; ++j) {
        otherBoxes[static_cast<std::size_t>(j)] =
            BoxOf(other.triangles[static_cast<std::size_t>(others.first + j)]);
    }
    bool improved = false;
    for (int i = mine.first; i < mine.first + mine.count; ++i) {
        const clr_Triangle& first = triangles[static_cast<std::size_t>(i)];
        const clr_Box box = BoxOf(first);
        if (!(box.DistanceSq(others.box) < nearest.distanceSq)) continue;
        for (int j = 0; j < others.count; ++j) {
            if (box.DistanceSq(otherBoxes[static_cast<std::size_t>(j)]) < nearest.distanceSq) {
                improved |= clr_FindNearest(
                    first, other.triangles[static_cast<std::size_t>(others.first + j)], nearest);
            }
        }
    }
    return improved;
}

bool clr_TriangleTree::FindNearest(const clr_TriangleTree& other, clr_Nearest& nearest) const {
    struct Pair {
        double distanceSq;
        int mine;
        int others;
    };
    bool improved = false;
    Pending<Pair> pending;
    pending.Push({Box().DistanceSq(other.Box()), 0, 0});
    while (!pending.IsEmpty()) {
        const Pair pair = pending.Pop();
        if (!(pair.distanceSq < nearest.distanceSq)) continue;
        const Node& mine = At(pair.mine);
        const Node& others = other.At(pair.others);
        if (mine.IsLeaf() && others.IsLeaf()) {
            improved |= PairLeaves(mine, other, others, nearest);
            continue;
        }
        const bool splitMine =
            others.IsLeaf() || (!mine.IsLeaf() && mine.box.DiagonalSq() >= others.box.DiagonalSq());
        const auto make = [&](int node) {
            return splitMine ? Pair{At(node).box.DistanceSq(others.box), node, pair.others}
                             : Pair{other.At(node).box.DistanceSq(mine.box), pair.mine, node};
        };
        Pair near = make((splitMine ? pair.mine : pair.others) + 1);
        Pair far = make(splitMine ? mine.right : others.right);
        if (far.distanceSq < near.distanceSq) std::swap(near, far);
        pending.Push(far);
        pending.Push(near);
    }
    return improved;
}

bool clr_TriangleTree::FindNearest(const clr_Vec& point, double enoughSq,
                                   clr_Nearest& nearest) const {
    struct Entry {
        double distanceSq;
        int node;
    };
    bool improved = false;
    Pending<Entry> pending;
    pending.Push({Box().DistanceSq(point), 0});
    while (!pending.IsEmpty() && !(improved && nearest.distanceSq <= enoughSq)) {
        const Entry entry = pending.Pop();
        if (!(entry.distanceSq < nearest.distanceSq)) continue;
        const Node& node = At(entry.node);
        if (node.IsLeaf()) {
            for (int i = node.first; i < node.first + node.count; ++i) {
                improved |= clr_FindNearest(point, triangles[static_cast<std::size_t>(i)], nearest);
            }
            continue;
        }
        Entry near{At(LeftOf(entry.node)).box.DistanceSq(point), LeftOf(entry.node)};
        Entry far{At(node.right).box.DistanceSq(point), node.right};
        if (far.distanceSq < near.distanceSq) std::swap(near, far);
        pending.Push(far);
        pending.Push(near);
    }
    return improved;
}

void clr_TriangleTree::AddCrossings(const clr_Vec& start, const clr_Vec& end,
                                    std::vector<double>& parameters) const {
    clr_Box segment;
    segment.Add(start);
    segment.Add(end);
    Pending<int> pending;
    pending.Push(0);
    while (!pending.IsEmpty()) {
        const int index = pending.Pop();
        const Node& node = At(index);
        if (node.box.DistanceSq(segment) > 0) continue;
        if (!node.IsLeaf()) {
            pending.Push(node.right);
            pending.Push(LeftOf(index));
            continue;
        }
        for (int i = node.first; i < node.first + node.count; ++i) {
            const auto crossing =
                clr_FindCrossing(start, end, triangles[static_cast<std::size_t>(i)]);
            if (crossing) parameters.push_back(*crossing);
        }
    }
}

std::optional<int> clr_TriangleTree::CountPassings(const clr_Vec& point) const {
    const Ray ray(point);
    int count = 0;
    for (int index = 0; index < static_cast<int>(nodes.size());) {
        const Node& node = At(index);
        if (!ray.Meets(node.box)) {
            index = node.after;
            continue;
        }
        if (node.IsLeaf()) {
            for (int i = node.first; i < node.first + node.count; ++i) {
                const auto passing = ray.PassingOf(triangles[static_cast<std::size_t>(i)]);
                if (!passing) return std::nullopt;
                count += *passing;
            }
        }
        ++index;
    }
    return count;
}
