#pragma once

#include <array>
#include <memory>
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
    /// The corners of the triangles.
    [[nodiscard]] const std::vector<clr_Vec>& Vertices() const noexcept { return mesh.vertices; }
    /// The edges of the triangles, each once, by the numbers of their ends.
    [[nodiscard]] const std::vector<std::pair<int, int>>& Edges() const noexcept { return edges; }

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
    [[nodiscard]] static bool IsInside(Side side) noexcept {
        return side == Side::Inside || side == Side::UnclearInside;
    }
    [[nodiscard]] static bool IsUnclear(Side side) noexcept {
        return side == Side::UnclearOutside || side == Side::UnclearInside;
    }

  private:
    /// Vertices in model space, each the corner of a triangle.
    struct Mesh {
        std::vector<clr_Vec> vertices;
        std::vector<clr_Winding::Corners> corners;

        explicit Mesh(const hst_Part& part);
        [[nodiscard]] std::vector<clr_Triangle> Triangles() const;
        [[nodiscard]] std::vector<std::pair<int, int>> Edges() const;
    };

    Mesh mesh;
    std::vector<std::pair<int, int>> edges;
    clr_TriangleTree tree;
    clr_Winding winding;
};
