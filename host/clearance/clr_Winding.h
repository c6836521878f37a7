#pragma once

#include <array>
#include <optional>
#include <vector>

#include "host/clearance/clr_SeamCaps.h"
#include "host/clearance/clr_TriangleTree.h"

/// The winding number of a part's surface about points: the sum of the signed solid angles of its
/// triangles over 4 pi, 1 inside a closed surface whose triangles turn counter-clockwise as seen
/// from outside, 0 outside of it, and between these near the open seams of one that is not closed
/// (A. Jacobson et al., Robust inside-outside segmentation using generalized winding numbers,
/// 2013).
///
/// From outside of a node's box its triangles are seen under the same solid angle as any other
/// surface with their boundary, so a fan over the boundary stands in for them. That is exact, and a
/// query costs about the square root of the triangles.
class clr_Winding {
  public:
    using Corners = std::array<int, 3>;

    /// `corners` holds the vertex numbers of every triangle of `surface`, in the order of the tree.
    /// The tree and the positions outlive the object.
    clr_Winding(const clr_TriangleTree& surface, const std::vector<Corners>& corners,
                const std::vector<clr_Vec>& positions);

    /// The winding number about `point`. On the surface itself it is a value between those of the
    /// two sides.
    [[nodiscard]] double At(const clr_Vec& point) const;
    /// The whole number from which the winding numbers of all points of a ball that is clear of the
    /// surface differ by no more than `mostFraction`, which is below one half; nothing where there
    /// may be none, near wide seams. This takes about the logarithm of the triangles.
    [[nodiscard]] std::optional<int> WholeAt(const clr_Ball& ball, double mostFraction) const;

  private:
    class AngleSum;
    /// An edge of a boundary, passed `count` times more from `from` to `to` than the other way.
    struct Edge {
        int from;
        int to;
        int count;
    };
    using Boundary = std::vector<Edge>;
    struct Fan {
        int first = 0;   ///< its first edge
        int count = -1;  ///< its edges; below 0 the node's triangles are taken instead
    };

    static std::vector<clr_SeamCaps::Step> StepsOf(const Boundary& boundary);
    Boundary CloseNodes(int node, const std::vector<Corners>& corners);
    [[nodiscard]] Boundary BoundaryOfLeaf(const clr_TriangleTree::Node& leaf,
                                          const std::vector<Corners>& corners) const;
    static Boundary Merge(const Boundary& a, const Boundary& b);
    void AddLeaf(const clr_TriangleTree::Node& leaf, const clr_Vec& point, AngleSum& sum) const;
    void AddFan(const Fan& fan, const clr_Vec& point, AngleSum& sum) const;

    const clr_TriangleTree& tree;
    const std::vector<clr_Vec>& vertices;
    std::vector<Fan> fans;  ///< one a node
    std::vector<Edge> edges;
    clr_SeamCaps caps;
};
