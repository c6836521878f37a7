#include "host/clearance/clr_TriangleDistance.h"

#include <algorithm>
#include <iterator>

namespace {

/// The normal of a triangle, as long as twice its area; none where the triangle is a line.
clr_Vec NormalOf(const clr_Triangle& triangle) noexcept {
    // The normal is rounded by 1e-16 of the product of two sides, so that taking a thinner triangle
    // as a face would be as far off as taking it as its edges.
    constexpr double kLeastSine = 1e-8;
    const clr_Vec a = triangle[1] - triangle[0];
    const clr_Vec b = triangle[2] - triangle[0];
    const double longestSq = std::max({clr_LengthSq(a), clr_LengthSq(b), clr_LengthSq(b - a)});
    const double least = kLeastSine * longestSq;
    const clr_Vec normal = clr_Cross(a, b);
    return clr_LengthSq(normal) > least * least ? normal : clr_Vec();
}

/// A triangle with the normal that all its tests share.
struct Face {
    const clr_Triangle& corner;
    clr_Vec normal;  ///< of twice the area; of no length where the triangle counts as its edges
    double normalSq;

    explicit Face(const clr_Triangle& triangle) noexcept
        : corner(triangle), normal(NormalOf(triangle)), normalSq(clr_LengthSq(normal)) {}

    /// The distance of `p` above the plane, times the length of the normal.
    [[nodiscard]] double Height(const clr_Vec& p) const noexcept {
        return clr_Dot(normal, p - corner[0]);
    }
    /// Whether the foot of `p` on the plane lies in the triangle, its edges included.
    [[nodiscard]] bool IsAbove(const clr_Vec& p) const noexcept {
        return IsLeftOf(0, 1, p) && IsLeftOf(1, 2, p) && IsLeftOf(2, 0, p);
    }
    /// The same with room for rounding, so that nothing slips through between two triangles.
    [[nodiscard]] bool IsAboveOrBeside(const clr_Vec& p) const noexcept {
        constexpr double kRoom = 1e-12;  // of the length of the edge
        const double room = kRoom * std::sqrt(normalSq);
        return IsLeftOf(0, 1, p, room) && IsLeftOf(1, 2, p, room) && IsLeftOf(2, 0, p, room);
    }

  private:
    [[nodiscard]] bool IsLeftOf(std::size_t from, std::size_t to, const clr_Vec& p,
                                double room = 0) const noexcept {
        const clr_Vec edge = corner[to] - corner[from];
        return clr_Dot(normal, clr_Cross(edge, p - corner[from])) >= -room * clr_LengthSq(edge);
    }
};

using Heights = std::array<double, 3>;

Heights HeightsOf(const clr_Triangle& triangle, const Face& over) noexcept {
    return {over.Height(triangle[0]), over.Height(triangle[1]), over.Height(triangle[2])};
}

/// Whether the plane of the face keeps all corners at `distanceSq` or farther, on one side.
bool KeepsAway(const Heights& heights, const Face& face, double distanceSq) noexcept {
    const double low = std::min({heights[0], heights[1], heights[2]});
    const double high = std::max({heights[0], heights[1], heights[2]});
    const double height = std::max(low, -high);
    return height > 0 && height * height >= distanceSq * face.normalSq;
}

bool Improve(const clr_Vec& onFirst, const clr_Vec& onSecond, clr_Nearest& nearest) noexcept {
    const double distanceSq = clr_LengthSq(onSecond - onFirst);
    if (!(distanceSq < nearest.distanceSq)) return false;
    nearest = {distanceSq, onFirst, onSecond};
    return true;
}

double Clamped(double parameter) noexcept { return std::clamp(parameter, 0.0, 1.0); }

/// The parameter of the point nearest to `p` on the segment from `a` along `d`.
double ParameterOn(const clr_Vec& a, const clr_Vec& d, const clr_Vec& p) noexcept {
    const double lengthSq = clr_LengthSq(d);
    return lengthSq > 0 ? Clamped(clr_Dot(d, p - a) / lengthSq) : 0;
}

/// The nearest points of two segments (Ericson, 5.1.9). Where the directions are parallel to within
/// rounding, any point of the common stretch serves, and the start of the first is taken.
bool ImproveBySegments(const clr_Vec& a, const clr_Vec& aEnd, const clr_Vec& b, const clr_Vec& bEnd,
                       clr_Nearest& nearest) noexcept {
    constexpr double kParallel = 1e-15;  // of the product of the squared lengths
    const clr_Vec da = aEnd - a;
    const clr_Vec db = bEnd - b;
    const clr_Vec between = a - b;
    const double aa = clr_LengthSq(da);
    const double bb = clr_LengthSq(db);
    const double ab = clr_Dot(da, db);
    const double slope = clr_Dot(da, between);
    const double determinant = aa * bb - ab * ab;
    double s = determinant > kParallel * aa * bb
                   ? Clamped((ab * clr_Dot(db, between) - slope * bb) / determinant)
                   : 0;
    const double t = ParameterOn(b, db, a + s * da);
    s = ParameterOn(a, da, b + t * db);
    return Improve(a + s * da, b + t * db, nearest);
}

bool ImproveByEdges(const clr_Triangle& first, const clr_Triangle& second, clr_Nearest& nearest) {
    bool improved = false;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            improved |= ImproveBySegments(first[i], first[(i + 1) % 3], second[j],
                                          second[(j + 1) % 3], nearest);
        }
    }
    return improved;
}

/// The foot on the face of each corner above it; `heights` are those of the corners.
template <class ImproveFromCorner>
bool ImproveByCorners(const clr_Triangle& corners, const Heights& heights, const Face& face,
                      double distanceSq, ImproveFromCorner improve) {
    bool improved = false;
    if (!(face.normalSq > 0)) return false;
    for (std::size_t i = 0; i < 3; ++i) {
        if (heights[i] * heights[i] < distanceSq * face.normalSq && face.IsAbove(corners[i])) {
            improved |=
                improve(corners[i], corners[i] - (heights[i] / face.normalSq) * face.normal);
        }
    }
    return improved;
}

/// Where a segment whose ends lie at these heights passes the plane.
std::optional<double> PassingOf(double startHeight, double endHeight) noexcept {
    const bool passes = startHeight >= 0 ? endHeight <= 0 : endHeight >= 0;
    if (!passes || startHeight == endHeight) return std::nullopt;
    return startHeight / (startHeight - endHeight);
}

/// A point where an edge of the triangle passes the face.
std::optional<clr_Vec> FindPassing(const clr_Triangle& triangle, const Heights& heights,
                                   const Face& face) noexcept {
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t next = (i + 1) % 3;
        const auto parameter = PassingOf(heights[i], heights[next]);
        if (!parameter) continue;
        const clr_Vec point = triangle[i] + *parameter * (triangle[next] - triangle[i]);
        if (face.IsAbove(point)) return point;
    }
    return std::nullopt;
}

}  // namespace

bool clr_HasArea(const clr_Triangle& triangle) noexcept {
    return clr_LengthSq(NormalOf(triangle)) > 0;
}

bool clr_FindNearest(const clr_Triangle& first, const clr_Triangle& second, clr_Nearest& nearest) {
    const Face firstFace(first);
    const Face secondFace(second);
    const Heights firstHeights = HeightsOf(first, secondFace);
    if (KeepsAway(firstHeights, secondFace, nearest.distanceSq)) return false;
    const Heights secondHeights = HeightsOf(second, firstFace);
    if (KeepsAway(secondHeights, firstFace, nearest.distanceSq)) return false;

    std::optional<clr_Vec> passing = FindPassing(first, firstHeights, secondFace);
    if (!passing) passing = FindPassing(second, secondHeights, firstFace);
    if (passing) return Improve(*passing, *passing, nearest);

    bool improved = ImproveByEdges(first, second, nearest);
    improved |= ImproveByCorners(
        first, firstHeights, secondFace, nearest.distanceSq,
        [&](const clr_Vec& corner, const clr_Vec& foot) { return Improve(corner, foot, nearest); });
    improved |= ImproveByCorners(
        second, secondHeights, firstFace, nearest.distanceSq,
        [&](const clr_Vec& corner, const clr_Vec& foot) { return Improve(foot, corner, nearest); });
    return improved;
}

bool clr_FindNearest(const clr_Vec& point, const clr_Triangle& triangle, clr_Nearest& nearest) {
    const Face face(triangle);
    const double height = face.Height(point);
    if (height * height >= nearest.distanceSq * face.normalSq && face.normalSq > 0) return false;
    if (face.normalSq > 0 && face.IsAbove(point)) {
        return Improve(point, point - (height / face.normalSq) * face.normal, nearest);
    }
    bool improved = false;
    for (std::size_t i = 0; i < 3; ++i) {
        const clr_Vec edge = triangle[(i + 1) % 3] - triangle[i];
        const double parameter = ParameterOn(triangle[i], edge, point);
        improved |= Improve(point, triangle[i] + parameter * edge, nearest);
    }
    return improved;
}

std::optional<double> clr_FindCrossing(const clr_Vec& start, const clr_Vec& end,
                                       const clr_Triangle& triangle) {
    const Face face(triangle);
    if (!(face.normalSq > 0)) return std::nullopt;
    const auto parameter = PassingOf(face.Height(start), face.Height(end));
    if (!parameter || !face.IsAboveOrBeside(start + *parameter * (end - start))) {
        return std::nullopt;
    }
    return parameter;
}

std::optional<int> clr_PassingOf(const clr_Vec& start, const clr_Vec& direction,
                                 const clr_Triangle& triangle) {
    constexpr double kRoom = 1e-14;  // of the product of the lengths, some ten times the rounding
    const clr_Vec a = triangle[0] - start;
    const clr_Vec b = triangle[1] - start;
    const clr_Vec c = triangle[2] - start;
    const double reachSq = std::max({clr_LengthSq(a), clr_LengthSq(b), clr_LengthSq(c)});
    const double beside[] = {clr_Dot(direction, clr_Cross(b, c)),
                             clr_Dot(direction, clr_Cross(c, a)),
                             clr_Dot(direction, clr_Cross(a, b))};
    const double room = kRoom * clr_Length(direction) * reachSq;
    const auto [least, most] = std::minmax_element(std::begin(beside), std::end(beside));
    if (*least<-room&& * most> room) return 0;
    if (!(*least > room || *most < -room)) return std::nullopt;
    const double volume = clr_Dot(a, clr_Cross(b, c));  // of the same sign when it lies ahead
    if (!(std::abs(volume) > kRoom * reachSq * std::sqrt(reachSq))) return std::nullopt;
    const int side = *least > 0 ? 1 : -1;
    return (volume > 0) == (side > 0) ? side : 0;
}
