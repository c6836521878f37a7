#include "host/picture/pic_Shading.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kAmbient = 0.15;
constexpr double kSteps = 64;
// Toward the light; of length 1.
constexpr pic_Spot kLight{-0.36, -0.48, -0.8};

pic_Spot Difference(const pic_Spot& a, const pic_Spot& b) {
    return {a.x - b.x, a.y - b.y, a.depth - b.depth};
}

/// The product of two sides, a normal: away from the viewer when the corners run clockwise.
pic_Spot Normal(const std::array<pic_Spot, 3>& corners) {
    const pic_Spot u = Difference(corners[1], corners[0]);
    const pic_Spot v = Difference(corners[2], corners[0]);
    return {u.y * v.depth - u.depth * v.y, u.depth * v.x - u.x * v.depth, u.x * v.y - u.y * v.x};
}

/// The brightness of a surface with the normal `away`, seen from its other side.
double Brightness(const pic_Spot& away) {
    const double length = std::hypot(away.x, away.y, away.depth);
    if (!(length > 0)) return kAmbient;
    const double cosine =
        -(away.x * kLight.x + away.y * kLight.y + away.depth * kLight.depth) / length;
    return kAmbient + (1 - kAmbient) * (1 + cosine) / 2;
}

}  // namespace

std::uint32_t pic_PackedColor(const g3d_Color& color) {
    const auto channel = [](float fraction) {
        return static_cast<std::uint32_t>(std::lround(std::clamp(fraction, 0.0f, 1.0f) * 255));
    };
    return channel(color.Red()) << 16 | channel(color.Green()) << 8 | channel(color.Blue());
}

pic_Face pic_ShadedFace(const std::array<pic_Spot, 3>& corners, const g3d_Color& color) {
    pic_Face face{corners};
    pic_Spot normal = Normal(face.corners);
    if (normal.depth < 0) {
        std::swap(face.corners[1], face.corners[2]);
        normal = Normal(face.corners);
    }
    const auto brightness = static_cast<float>(std::round(Brightness(normal) * kSteps) / kSteps);
    face.rgb = pic_PackedColor(
        {color.Red() * brightness, color.Green() * brightness, color.Blue() * brightness});
    return face;
}
