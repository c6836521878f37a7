#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "host/clearance/clr_TriangleDistance.h"
#include "host/clearance/clr_Vec.h"

/// A binary tree of boxes over the triangles of one part, halved at the median along the longest
/// axis. The tree keeps the triangles in its own order, those of a node side by side.
///
/// The pairing of two trees asks for nothing but the nearest pair, so each step goes to the nearer
/// boxes first and drops all that are no nearer than what is found. The library's octrees report
/// every pair within a tolerance, most of which this never looks at; `bench/clr_bench` holds both,
/// and FCL, against each other. Trees are read by any number of threads at a time.
class clr_TriangleTree {
  public:
    struct Node {
        clr_Box box;
        int first = 0;  ///< the first triangle below
        int count = 0;  ///< the triangles below
        int right = 0;  ///< the second child, the first stands behind the node; 0: a leaf
        int after = 0;  ///< the node behind all that lie below

        [[nodiscard]] bool IsLeaf() const noexcept { return right == 0; }
    };
    static constexpr int LEAF_TRIANGLES = 4;

    /// At least one triangle.
    explicit clr_TriangleTree(const std::vector<clr_Triangle>& triangles);

    [[nodiscard]] const std::vector<Node>& Nodes() const noexcept { return nodes; }
    [[nodiscard]] const Node& At(int node) const noexcept {
        return nodes[static_cast<std::size_t>(node)];
    }
    /// The first child of a node that is no leaf.
    [[nodiscard]] static int LeftOf(int node) noexcept { return node + 1; }
    /// The triangles in the order of the tree.
    [[nodiscard]] const std::vector<clr_Triangle>& Triangles() const noexcept { return triangles; }
    /// The number that the triangle at `position` of the tree's order was given with.
    [[nodiscard]] int Original(int position) const noexcept {
        return order[static_cast<std::size_t>(position)];
    }
    [[nodiscard]] const clr_Box& Box() const noexcept { return nodes[0].box; }

    /// Puts the nearest points of the two surfaces into `nearest` when they are nearer than what it
    /// holds; true when they were.
    bool FindNearest(const clr_TriangleTree& other, clr_Nearest& nearest) const;
    /// Puts `point` and the point of the surface nearest to it into `nearest` when they are nearer
    /// than what it holds; true when they were. Leaves the search as soon as a point no farther
    /// than the square root of `enoughSq` is found.
    bool FindNearest(const clr_Vec& point, double enoughSq, clr_Nearest& nearest) const;
    /// Adds to `parameters` where the segment from `start` to `end` passes a triangle, in no order.
    void AddCrossings(const clr_Vec& start, const clr_Vec& end,
                      std::vector<double>& parameters) const;
    /// How often a ray from `point` passes triangles from behind less how often from before: the
    /// winding number of a closed surface. Nothing where rounding decides.
    [[nodiscard]] std::optional<int> CountPassings(const clr_Vec& point) const;

  private:
    int Build(const std::vector<clr_Triangle>& source, const std::vector<clr_Vec>& centers,
              int first, int count);
    bool PairLeaves(const Node& mine, const clr_TriangleTree& other, const Node& others,
                    clr_Nearest& nearest) const;

    std::vector<Node> nodes;
    std::vector<clr_Triangle> triangles;
    std::vector<int> order;
};
