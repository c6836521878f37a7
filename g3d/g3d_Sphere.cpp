#include "g3d/g3d_Sphere.h"

#include "g3d/detail/g3d_Double3.h"

bool g3d_Sphere::Contains(const g3d_Point& point) const noexcept {
    if (IsEmpty()) return false;
    const g3d_Double3 offset = g3d_Double3(point) - g3d_Double3(middle);
    const double radius = extent;
    return offset.Dot(offset) <= radius * radius;
}
