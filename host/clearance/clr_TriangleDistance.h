#pragma once

#include <optional>

#include "host/clearance/clr_Vec.h"

/// Two points, one on each of two things, and the square of their distance.
struct clr_Nearest {
    double distanceSq = std::numeric_limits<double>::infinity();
    clr_Vec onFirst;
    clr_Vec onSecond;
};

/// Whether the triangle has an area: whether twice that exceeds 1e-8 of its longest side squared.
/// One with less is a line up to rounding, also where its placement turned it out of the axes.
[[nodiscard]] bool clr_HasArea(const clr_Triangle& triangle) noexcept;

/// Puts the nearest points of two triangles into `nearest` when they are nearer than what it holds;
/// true when they were.
///
/// The distance is the exact minimum up to rounding: that of triangles which do not cross is taken
/// at two edges or at a corner and a face, so all nine pairs of edges and all six corners are tried
/// (C. Ericson, Real-Time Collision Detection, 5.1); crossing triangles have distance 0 at the
/// point where an edge of one passes the face of the other. A triangle without area counts as its
/// edges.
bool clr_FindNearest(const clr_Triangle& first, const clr_Triangle& second, clr_Nearest& nearest);

/// Puts `point` and the point of the triangle nearest to it into `nearest` when they are nearer
/// than what it holds; true when they were.
bool clr_FindNearest(const clr_Vec& point, const clr_Triangle& triangle, clr_Nearest& nearest);

/// Where the segment from `start` to `end` passes the face of the triangle, 0 at its start and 1 at
/// its end; nothing when it does not, or lies in the plane of the triangle. Up to rounding beside
/// an edge it passes too, so that it passes one at least of two triangles with a common edge.
[[nodiscard]] std::optional<double> clr_FindCrossing(const clr_Vec& start, const clr_Vec& end,
                                                     const clr_Triangle& triangle);

/// How a ray passes the face of a triangle: 1 from behind, -1 from before it, 0 when it misses;
/// nothing where rounding decides that, beside an edge or by the start of the ray.
[[nodiscard]] std::optional<int> clr_PassingOf(const clr_Vec& start, const clr_Vec& direction,
                                               const clr_Triangle& triangle);
