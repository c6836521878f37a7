#include "host/clearance/clr_Body.h"

#include <algorithm>
#include <cmath>

clr_Body::Mesh::Mesh(const hst_Part& part) {
    std::vector<int> numbers(static_cast<std::size_t>(part.VertexCount()), -1);
    corners.reserve(static_cast<std::size_t>(part.TriangleCount()));
    for (int i = 0; i < part.TriangleCount(); ++i) {
        clr_Winding::Corners triangle = part.Triangle(i);
        for (int& corner : triangle) {
            int& number = numbers[static_cast<std::size_t>(corner)];
            if (number < 0) {
                number = static_cast<int>(vertices.size());
                const gsl_Point placed = part.PlacedVertex(corner);
                vertices.push_back({placed.GetX(), placed.GetY(), placed.GetZ()});
            }
            corner = number;
        }
        corners.push_back(triangle);
    }
}

std::vector<clr_Triangle> clr_Body::Mesh::Triangles() const {
    std::vector<clr_Triangle> triangles(corners.size());
    std::transform(corners.begin(), corners.end(), triangles.begin(),
                   [this](const clr_Winding::Corners& corner) {
                       const auto at = [&](std::size_t k) {
                           return vertices[static_cast<std::size_t>(corner[k])];
                       };
                       return clr_Triangle{at(0), at(1), at(2)};
                   });
    return triangles;
}

std::vector<std::pair<int, int>> clr_Body::Mesh::Edges() const {
    std::vector<std::pair<int, int>> all;
    all.reserve(3 * corners.size());
    for (const clr_Winding::Corners& corner : corners) {
        for (std::size_t k = 0; k < 3; ++k) {
            all.push_back(std::minmax({corner[k], corner[(k + 1) % 3]}));
        }
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

clr_Body::clr_Body(const hst_Part& part)
    : mesh(part),
      edges(mesh.Edges()),
      tree(mesh.Triangles()),
      winding(tree, mesh.corners, mesh.vertices) {}

bool clr_Body::HasArea(const hst_Part& part) {
    const std::vector<clr_Triangle> triangles = Mesh(part).Triangles();
    return std::any_of(triangles.begin(), triangles.end(), clr_HasArea);
}

clr_Body::Side clr_Body::SideOf(const clr_Vec& point) const {
    constexpr double kInside = 0.5;
    constexpr double kClear = 0.25;  // as far as a winding number may be from a whole one
    if (!Box().Contains(point)) return Side::Outside;
    const double number = winding.At(point);
    const bool isClear = std::abs(number - std::round(number)) <= kClear && number > -kInside;
    if (number > kInside) return isClear ? Side::Inside : Side::UnclearInside;
    return isClear ? Side::Outside : Side::UnclearOutside;
}
