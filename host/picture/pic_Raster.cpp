#include "host/picture/pic_Raster.h"

#include <algorithm>
#include <cstddef>

#include "host/picture/pic_DepthBuffer.h"

namespace {

constexpr int kSamples = 4;    // along each side of a pixel
constexpr int kBandRows = 64;  // drawn at a time, which bounds the memory

std::uint32_t MeanColor(const pic_DepthBuffer& band, const std::vector<pic_Face>& faces,
                        std::uint32_t background, int x, int row) {
    constexpr std::uint32_t count = kSamples * kSamples;
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
    for (int i = 0; i < kSamples; ++i) {
        for (int k = 0; k < kSamples; ++k) {
            const int number = band.NumberAt(band.Place(row * kSamples + i, x * kSamples + k));
            const std::uint32_t rgb = number == pic_DepthBuffer::NOTHING
                                          ? background
                                          : faces[static_cast<std::size_t>(number)].rgb;
            red += rgb >> 16;
            green += rgb >> 8 & 0xff;
            blue += rgb & 0xff;
        }
    }
    const auto mean = [](std::uint32_t sum) { return (sum + count / 2) / count; };
    return mean(red) << 16 | mean(green) << 8 | mean(blue);
}

}  // namespace

std::vector<std::uint32_t> pic_Rasterise(const std::vector<pic_Face>& faces,
                                         std::uint32_t background, int width, int height) {
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int top = 0; top < height; top += kBandRows) {
        const int rowCount = std::min(kBandRows, height - top);
        pic_DepthBuffer band(width, top, rowCount, kSamples);
        for (std::size_t i = 0; i < faces.size(); ++i) band.Add(faces[i], static_cast<int>(i));
        for (int row = 0; row < rowCount; ++row) {
            for (int x = 0; x < width; ++x) {
                pixels.push_back(MeanColor(band, faces, background, x, row));
            }
        }
    }
    return pixels;
}
