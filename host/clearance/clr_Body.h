#pragma once

#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "host/clearance/clr_TriangleTree.h"
#include "host/clearance/clr_Winding.h"
#include "host/model/hst_Part.h"

/// A part as the clearance check sees it: its surface at its placement, in model space, with the
/// search structures over it. Read by any number of threads at a time.
class clr_Body {
  public:
    /// `part` has a triangle at least.
    explicit clr_Body(const hst_Part& part);
    clr_Body(const clr_Body&) = delete;
    clr_Body& operator=(const clr_Body&) = delete;

    /// Whether any triangle of the part has an area.
    [[nodiscard]] static bool HasArea(const hst_Part& part);

    [[nodiscard]] const clr_Box& Box() const noexcept { return tree.Box(); }
    [[nodiscard]] const clr_TriangleTree& Tree() const noexcept { return tree; }
    using Edge = std::pair<int, int>;  ///< the numbers of its ends, the lower first
    /// The corner of triangles that has this number.
    [[nodiscard]] const clr_Vec& Vertex(int number) const noexcept {
        return mesh.vertices[static_cast<std::size_t>(number)];
    }
    /// The corners and the edges of the triangles below a node of the tree, without those of a
    /// triangle before them: over all leaves each comes once.
    [[nodiscard]] std::span<const clr_Vec> VerticesOf(const clr_TriangleTree::Node& node) const;
    [[nodiscard]] std::span<const Edge> EdgesOf(const clr_TriangleTree::Node& node) const;

    /// What lies about a point.
    enum class Side {
        Outside,
        Inside,
        UnclearOutside,  ///< not inside, by a winding number that is far from a whole one or below
                         ///< 0
        UnclearInside,   ///< inside, by a winding number that is far from a whole one
    };
    /// The side of a point off the surface: inside where the winding number is above one half.
    /// Outside of the box nothing is inside.
    [[nodiscard]] Side SideOf(const clr_Vec& point) const;
    /// The clear side that all points of a ball share; nothing where the surface comes into it or
    /// some point may be on another side, or on none clearly.
    [[nodiscard]] std::optional<Side> SideOf(const clr_Ball& ball) const;
    [[nodiscard]] static bool IsInside(Side side) noexcept {
        return side == Side::Inside || side == Side::UnclearInside;
    }
    [[nodiscard]] static bool IsUnclear(Side side) noexcept {
        return side == Side::UnclearOutside || side == Side::UnclearInside;
    }

  private:
    /// The same of a ball that is clear of the surface.
    [[nodiscard]] std::optional<Side> ClearSideOf(const clr_Ball& ball) const;

    /// The triangles in the order of the tree, by the numbers of vertices in model space; these are
    /// numbered as the triangles come to them.
    struct Mesh {
        std::vector<clr_Vec> vertices;
        std::vector<clr_Winding::Corners> corners;
        std::vector<int> firstVertex;  ///< the first new one of each triangle, and behind the last

        Mesh(const hst_Part& part, const clr_TriangleTree& tree);
    };
    /// The edges of a mesh as the triangles come to them.
    struct Edges {
        std::vector<Edge> ends;
        std::vector<int> first;  ///< the first new one of each triangle, and behind the last

        explicit Edges(const std::vector<clr_Winding::Corners>& corners);
    };

    clr_TriangleTree tree;
    Mesh mesh;
    Edges edges;
    clr_Winding winding;
};
