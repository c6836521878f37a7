#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "host/picture/pic_Face.h"

/// The nearest face at each sample of some rows of a picture (z-buffer). Every pixel holds
/// `samplesPerPixel` x `samplesPerPixel` samples at the centres of its equal squares; samples are
/// numbered line by line from the upper left one. A sample on a side that two faces share belongs
/// to one of them, so that neighbours neither overlap nor leave a gap.
class pic_DepthBuffer {
  public:
    static constexpr int NOTHING = -1;

    /// For `rowCount` rows of pixels of a picture `width` pixels wide, from `firstRow` on.
    pic_DepthBuffer(int width, int firstRow, int rowCount, int samplesPerPixel)
        : samples(samplesPerPixel),
          firstRowOfSamples(firstRow * samplesPerPixel),
          columns(width * samplesPerPixel),
          rows(rowCount * samplesPerPixel),
          depths(Place(rows, 0), std::numeric_limits<float>::infinity()),
          numbers(depths.size(), NOTHING) {}

    /// Adds a face under a number. Where two are equally near, the first one stays.
    void Add(const pic_Face& face, int number);

    /// Calls `visit(sample, depth)` for every sample that the face covers.
    template <class Visit>
    void ForEachSample(const pic_Face& face, const Visit& visit) const;

    [[nodiscard]] std::size_t Place(int row, int column) const noexcept {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
               static_cast<std::size_t>(column);
    }
    /// The sample in whose square a spot lies, or the one nearest to a spot outside.
    [[nodiscard]] std::size_t PlaceOf(const pic_Spot& spot) const noexcept {
        const pic_Spot at = InSamples(spot);
        return Place(FirstFrom(at.y - 0.5, rows - 1), FirstFrom(at.x - 0.5, columns - 1));
    }
    /// The number of the nearest face at a sample, or NOTHING.
    [[nodiscard]] int NumberAt(std::size_t sample) const noexcept { return numbers[sample]; }
    /// Its depth in pixels; infinite where there is none.
    [[nodiscard]] float DepthAt(std::size_t sample) const noexcept { return depths[sample]; }

  private:
    /// Where the side from the upper end `from` to the lower end `to` crosses a row. Faces that
    /// share a side get the same number to the last bit.
    static double CrossingOf(const pic_Spot& from, const pic_Spot& to, int row) noexcept {
        return from.x + (row - from.y) * (to.x - from.x) / (to.y - from.y);
    }
    /// The first sample not before `place`, within 0 to `limit`.
    static int FirstFrom(double place, int limit) noexcept {
        return static_cast<int>(std::clamp(std::ceil(place), 0.0, static_cast<double>(limit)));
    }
    [[nodiscard]] pic_Spot InSamples(const pic_Spot& spot) const noexcept {
        return {spot.x * samples - 0.5, spot.y * samples - 0.5 - firstRowOfSamples, spot.depth};
    }

    int samples;
    int firstRowOfSamples;
    int columns;
    int rows;
    std::vector<float> depths;
    std::vector<int> numbers;
};

inline void pic_DepthBuffer::Add(const pic_Face& face, int number) {
    ForEachSample(face, [this, number](std::size_t sample, float depth) {
        if (!(depth < depths[sample])) return;
        depths[sample] = depth;
        numbers[sample] = number;
    });
}

template <class Visit>
void pic_DepthBuffer::ForEachSample(const pic_Face& face, const Visit& visit) const {
    std::array<pic_Spot, 3> spots;
    std::transform(face.corners.begin(), face.corners.end(), spots.begin(),
                   [this](const pic_Spot& spot) { return InSamples(spot); });
    std::sort(spots.begin(), spots.end(),
              [](const pic_Spot& one, const pic_Spot& other) { return one.y < other.y; });
    const auto& [a, b, c] = spots;
    const double area = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    const int firstRow = FirstFrom(a.y, rows);
    const int endRow = FirstFrom(c.y, rows);
    if (firstRow >= endRow || area == 0) return;
    const double perColumn =
        ((b.depth - a.depth) * (c.y - a.y) - (c.depth - a.depth) * (b.y - a.y)) / area;
    const double perRow =
        ((c.depth - a.depth) * (b.x - a.x) - (b.depth - a.depth) * (c.x - a.x)) / area;
    // The plane of a face seen nearly edge-on is steep; rounding must not leave the face.
    const auto [nearest, farthest] = std::minmax({a.depth, b.depth, c.depth});
    for (int row = firstRow; row < endRow; ++row) {
        const double crossings[2] = {CrossingOf(a, c, row),
                                     row < b.y ? CrossingOf(a, b, row) : CrossingOf(b, c, row)};
        const auto [left, right] = std::minmax(crossings[0], crossings[1]);
        const double atStart = a.depth + (row - a.y) * perRow - a.x * perColumn;
        const int end = FirstFrom(right, columns);
        for (int column = FirstFrom(left, columns); column < end; ++column) {
            const double depth = std::clamp(atStart + column * perColumn, nearest, farthest);
            visit(Place(row, column), static_cast<float>(depth));
        }
    }
}
