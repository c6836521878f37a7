#pragma once

#include <optional>

#include "host/clearance/clr_Vec.h"

/// Two points, one on each of two things, and the square of their distance.
struct clr_Nearest {
    double distanceSq = std::numeric_limits<double>::infinity();
    clr_Vec onFirst;
    clr_Vec onSecond;
};

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
/// its end; nothing when it does not, or lies in the plane of the triangle.
[[nodiscard]] std::optional<double> clr_FindCrossing(const clr_Vec& start, const clr_Vec& end,
                                                     const clr_Triangle& triangle);
