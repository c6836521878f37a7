#include "host/picture/pic_Raster.h"

#include <algorithm>
#include <cstddef>

#include "host/picture/pic_DepthBuffer.h"

namespace {

constexpr int kSamples = 4;    // along each side of a pixel
constexpr int kBandRows = 64;  // drawn at a time, which bounds the memory

/// Some rows of a picture.
class Band {
  public:
    Band(const pic_Scene& shown, std::uint32_t backgroundRgb, int width, int top, int rowCount)
        : scene(shown),
          background(backgroundRgb),
          faces(width, top, rowCount, kSamples),
          ghosts(width, top, scene.ghosts.empty() ? 0 : rowCount, kSamples) {
        for (std::size_t i = 0; i < scene.faces.size(); ++i) {
            faces.Add(scene.faces[i], static_cast<int>(i));
        }
        for (std::size_t i = 0; i < scene.ghosts.size(); ++i) {
            ghosts.Add(scene.ghosts[i], static_cast<int>(i));
        }
    }

    [[nodiscard]] std::uint32_t MeanColor(int x, int row) const {
        constexpr std::uint32_t count = kSamples * kSamples;
        std::uint32_t red = 0;
        std::uint32_t green = 0;
        std::uint32_t blue = 0;
        for (int i = 0; i < kSamples; ++i) {
            for (int k = 0; k < kSamples; ++k) {
                const std::uint32_t rgb =
                    ColorAt(faces.Place(row * kSamples + i, x * kSamples + k));
                red += rgb >> 16;
                green += rgb >> 8 & 0xff;
                blue += rgb & 0xff;
            }
        }
        const auto mean = [](std::uint32_t sum) { return (sum + count / 2) / count; };
        return mean(red) << 16 | mean(green) << 8 | mean(blue);
    }

  private:
    [[nodiscard]] std::uint32_t ColorAt(std::size_t sample) const {
        const int face = faces.NumberAt(sample);
        const std::uint32_t rgb = face == pic_DepthBuffer::NOTHING
                                      ? background
                                      : scene.faces[static_cast<std::size_t>(face)].rgb;
        if (scene.ghosts.empty()) return rgb;
        const int ghost = ghosts.NumberAt(sample);
        const bool isInFront =
            ghost != pic_DepthBuffer::NOTHING && ghosts.DepthAt(sample) < faces.DepthAt(sample);
        return isInFront ? pic_MixedColor(scene.ghosts[static_cast<std::size_t>(ghost)].rgb, rgb)
                         : rgb;
    }

    const pic_Scene& scene;
    std::uint32_t background;
    pic_DepthBuffer faces;
    pic_DepthBuffer ghosts;
};

}  // namespace

std::uint32_t pic_MixedColor(std::uint32_t ghost, std::uint32_t behind) {
    const auto channel = [&](int shift) {
        const double mixed = pic_GHOST_OPACITY * (ghost >> shift & 0xff) +
                             (1 - pic_GHOST_OPACITY) * (behind >> shift & 0xff);
        return static_cast<std::uint32_t>(mixed + 0.5) << shift;
    };
    return channel(16) | channel(8) | channel(0);
}

std::vector<std::uint32_t> pic_Rasterise(const pic_Scene& scene, std::uint32_t background,
                                         int width, int height) {
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int top = 0; top < height; top += kBandRows) {
        const int rowCount = std::min(kBandRows, height - top);
        const Band band(scene, background, width, top, rowCount);
        for (int row = 0; row < rowCount; ++row) {
            for (int x = 0; x < width; ++x) pixels.push_back(band.MeanColor(x, row));
        }
    }
    return pixels;
}
