#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "host/clearance/clr_TriangleTree.h"

/// Triangles that close the open seams of a surface, of as little area as cutting off the smallest
/// ear first finds: next to none over the slits that meshes of parts have where faces meet.
///
/// With its caps the surface is closed and has a whole winding number about a point, so without
/// them the number is off a whole one by no more than the solid angle of the caps over 4 pi.
class clr_SeamCaps {
  public:
    using Step = std::pair<int, int>;  ///< along a seam, from a vertex to the next

    /// `seams` run as the edges of the missing triangles would: at each vertex as many of the steps
    /// begin as end.
    clr_SeamCaps(const std::vector<Step>& seams, const std::vector<clr_Vec>& vertices);

    /// At least the solid angle of the caps over 4 pi as seen from any point of the ball; infinite
    /// where a cap comes into it.
    [[nodiscard]] double MostWinding(const clr_Ball& ball) const;
    /// As of the tree of the surface.
    [[nodiscard]] std::optional<int> CountPassings(const clr_Vec& point) const {
        return tree ? tree->CountPassings(point) : 0;
    }

  private:
    using Loop = std::vector<int>;
    static std::vector<Loop> LoopsOf(const std::vector<Step>& seams);
    /// Joins loops that come near each other by a way there and back, since the two sides of a slit
    /// around a part are a loop each; a cap over both has little area. Very many loops stay apart.
    static std::vector<Loop> Joined(std::vector<Loop> loops, const std::vector<clr_Vec>& vertices);
    void Cap(const Loop& loop, const std::vector<clr_Vec>& vertices);
    [[nodiscard]] double MostWinding(int node, const clr_Ball& ball) const;

    std::vector<clr_Triangle> caps;
    std::optional<clr_TriangleTree> tree;  ///< over the caps; none of a closed surface
    std::vector<double> areas;             ///< below each node of the tree
};
