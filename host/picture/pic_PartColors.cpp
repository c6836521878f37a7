#include "host/picture/pic_PartColors.h"

#include <algorithm>
#include <cstddef>

#include "g3d/g3d_ColorMap.h"

namespace {

// Distances run from 0 to 3.
constexpr float kLeastFromAvoided = 0.7f;
constexpr float kLeastValue = 0.5f;  // of the HSV triple
constexpr float kLeastFromEachOther = 0.4f;
constexpr float kWhitePart = 0.3f;  // so that blue shows its shading too
constexpr float kMostGrey = 0.6f;
constexpr const char* kFirst = "Medium blue";
constexpr const char* kWhite = "White";
constexpr const char* kGrey = "Grey40";

float NearestDistance(const g3d_Color& color, const std::vector<g3d_Color>& others) {
    float nearest = 3;
    for (const g3d_Color& other : others) nearest = std::min(nearest, color.Distance(other));
    return nearest;
}

float Value(const g3d_Color& color) {
    float hsv[3];
    return color.HSV(hsv)[2];
}

std::vector<g3d_Color> NamedColors(const std::vector<g3d_Color>& avoided) {
    const g3d_ColorMap& map = g3d_ColorMap::Instance();
    std::vector<g3d_Color> chosen{map.Lookup(kFirst)};
    for (;;) {
        const g3d_Color* best = nullptr;
        float bestDistance = kLeastFromEachOther;
        for (int i = 0; i < map.Size(); ++i) {
            const g3d_Color& color = map.ColorAt(i);
            if (NearestDistance(color, avoided) < kLeastFromAvoided) continue;
            if (Value(color) < kLeastValue) continue;
            const float distance = NearestDistance(color, chosen);
            if (distance <= bestDistance) continue;
            best = &color;
            bestDistance = distance;
        }
        if (!best) return chosen;
        chosen.push_back(*best);
    }
}

}  // namespace

std::vector<g3d_Color> pic_PartColors(int count, const std::vector<g3d_Color>& avoided) {
    const std::vector<g3d_Color> named = NamedColors(avoided);
    const g3d_Color& white = g3d_ColorMap::Instance().Lookup(kWhite);
    const g3d_Color& grey = g3d_ColorMap::Instance().Lookup(kGrey);
    const int rounds = (count - 1) / static_cast<int>(named.size()) + 1;
    std::vector<g3d_Color> colors;
    for (int i = 0; i < count; ++i) {
        const g3d_Color& color = named[static_cast<std::size_t>(i) % named.size()];
        const int round = i / static_cast<int>(named.size());
        const float part = kMostGrey * static_cast<float>(round) / static_cast<float>(rounds);
        const g3d_Color softened = g3d_Color::Mix(color, 1 - kWhitePart, white, kWhitePart);
        colors.push_back(g3d_Color::Mix(softened, 1 - part, grey, part));
    }
    return colors;
}
