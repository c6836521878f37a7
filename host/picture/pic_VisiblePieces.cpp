#include "host/picture/pic_VisiblePieces.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "host/picture/pic_DepthBuffer.h"

namespace {

constexpr int kSamples = 2;  // along each side of a pixel
// In pixels. Beside a sample, where another depth is right, a slope must not count as hidden.
constexpr float kDepthTolerance = 0.01f;
constexpr double kDepthToleranceBeside = 2;
constexpr double kSmallestCut = 2;

pic_Spot Between(const pic_Spot& from, const pic_Spot& to, double part) {
    return {from.x + part * (to.x - from.x), from.y + part * (to.y - from.y),
            from.depth + part * (to.depth - from.depth)};
}

double Length(const pic_Spot& from, const pic_Spot& to) {
    return std::hypot(to.x - from.x, to.y - from.y);
}

bool IsSmall(const pic_Face& face) {
    const auto& [a, b, c] = face.corners;
    const auto [left, right] = std::minmax({a.x, b.x, c.x});
    const auto [top, bottom] = std::minmax({a.y, b.y, c.y});
    return std::max(right - left, bottom - top) <= kSmallestCut;
}

double DepthSum(const pic_Face& face) {
    return face.corners[0].depth + face.corners[1].depth + face.corners[2].depth;
}

/// Takes faces apart by what is seen of them.
class Dissection {
  public:
    explicit Dissection(const pic_DepthBuffer& depthBuffer) : buffer(depthBuffer) {}

    void Add(const pic_Face& face) {
        const Count count = CountSamples(face);
        if (count.covered > 0) AddPiece(face, count);
    }

    [[nodiscard]] std::vector<pic_Face> InOrder() && {
        std::stable_sort(across.begin(), across.end(), [](const pic_Face& a, const pic_Face& b) {
            return DepthSum(a) > DepthSum(b);
        });
        std::stable_sort(whole.begin(), whole.end(),
                         [](const pic_Face& a, const pic_Face& b) { return a.rgb < b.rgb; });
        across.insert(across.end(), whole.begin(), whole.end());
        return std::move(across);
    }

  private:
    struct Count {
        int covered = 0;
        int seen = 0;
    };

    [[nodiscard]] Count CountSamples(const pic_Face& face) const {
        Count count;
        buffer.ForEachSample(face, [&](std::size_t sample, float depth) {
            ++count.covered;
            if (depth <= buffer.DepthAt(sample) + kDepthTolerance) ++count.seen;
        });
        return count;
    }

    /// Whether nothing hides the spot, as far as the sample beside it tells.
    [[nodiscard]] bool IsSeen(const pic_Spot& spot) const {
        return spot.depth <= buffer.DepthAt(buffer.PlaceOf(spot)) + kDepthToleranceBeside;
    }

    /// Whether nothing hides a part of a side: slim faces and tips may lie between the samples.
    [[nodiscard]] bool AreSidesSeen(const pic_Face& face) const {
        for (std::size_t i = 0; i < 3; ++i) {
            const pic_Spot& from = face.corners[i];
            const pic_Spot& to = face.corners[(i + 1) % 3];
            const double steps = std::ceil(Length(from, to));
            for (double step = 0; step < steps; ++step) {
                if (!IsSeen(Between(from, to, step / steps))) return false;
            }
        }
        return true;
    }

    void AddPiece(const pic_Face& face, const Count& count) {
        const auto& [a, b, c] = face.corners;
        const bool isSeen =
            count.covered > 0 ? count.seen > 0 : IsSeen(Between(Between(a, b, 0.5), c, 1.0 / 3));
        if (!isSeen) return;
        if (IsSmall(face)) {
            (count.seen == count.covered ? whole : across).push_back(face);
        } else if (count.seen == count.covered && AreSidesSeen(face)) {
            whole.push_back(face);
        } else {
            AddHalves(face);
        }
    }

    /// Cuts the face in two across its longest side, so that pieces do not grow slim.
    void AddHalves(const pic_Face& face) {
        const auto& corners = face.corners;
        std::size_t from = 0;
        for (const std::size_t i : {1u, 2u}) {
            if (Length(corners[i], corners[(i + 1) % 3]) >
                Length(corners[from], corners[(from + 1) % 3])) {
                from = i;
            }
        }
        const std::size_t to = (from + 1) % 3;
        pic_Face half = face;
        half.corners[to] = Between(corners[from], corners[to], 0.5);
        AddPiece(half, CountSamples(half));
        half.corners = corners;
        half.corners[from] = Between(corners[from], corners[to], 0.5);
        AddPiece(half, CountSamples(half));
    }

    const pic_DepthBuffer& buffer;
    std::vector<pic_Face> across;  ///< the border of what hides them
    std::vector<pic_Face> whole;
};

}  // namespace

std::vector<pic_Face> pic_VisiblePieces(const std::vector<pic_Face>& faces, int width, int height) {
    pic_DepthBuffer buffer(width, 0, height, kSamples);
    for (std::size_t i = 0; i < faces.size(); ++i) buffer.Add(faces[i], static_cast<int>(i));
    Dissection dissection(buffer);
    for (const pic_Face& face : faces) dissection.Add(face);
    return std::move(dissection).InOrder();
}
