#include "gsl/gsl_MortonOrder.h"

#include <cstdint>

namespace {

constexpr unsigned gridBits = 10;
constexpr unsigned cellsPerSide = 1u << gridBits;

struct CodedItem {
    std::uint32_t code;
    unsigned item;
};

/// Moves the ten low bits of `value` to every third place.
std::uint32_t SpreadBits(std::uint32_t value) noexcept {
    value = (value | value << 16) & 0x030000FFu;
    value = (value | value << 8) & 0x0300F00Fu;
    value = (value | value << 4) & 0x030C30C3u;
    return (value | value << 2) & 0x09249249u;
}

/// The grid over the centres, taken as twice the midpoint so that nothing is divided.
class CentreGrid {
  public:
    explicit CentreGrid(const gsl_BBox& bounds) noexcept {
        for (int axis = 0; axis < 3; ++axis) {
            start[axis] = 2 * bounds.Low()[axis];
            const double length = bounds.High()[axis] - bounds.Low()[axis];
            cellsPerUnit[axis] = length > 0 ? 0.5 * cellsPerSide / length : 0;
        }
    }

    [[nodiscard]] std::uint32_t Code(const gsl_BBox& box) const noexcept {
        return SpreadBits(Cell(box, 0)) << 2 | SpreadBits(Cell(box, 1)) << 1 |
               SpreadBits(Cell(box, 2));
    }

  private:
    [[nodiscard]] std::uint32_t Cell(const gsl_BBox& box, int axis) const noexcept {
        const double cell = (box.Low()[axis] + box.High()[axis] - start[axis]) * cellsPerUnit[axis];
        if (!(cell > 0)) return 0;
        return cell < cellsPerSide ? static_cast<std::uint32_t>(cell) : cellsPerSide - 1;
    }

    double start[3];
    double cellsPerUnit[3];
};

/// One stable pass of a radix sort, by the `gridBits` bits from `shift` on.
void SortByDigit(const std::vector<CodedItem>& from, std::vector<CodedItem>& to, unsigned shift) {
    std::size_t starts[cellsPerSide] = {};
    const auto digit = [shift](const CodedItem& item) {
        return item.code >> shift & (cellsPerSide - 1);
    };
    for (const CodedItem& item : from) ++starts[digit(item)];
    std::size_t next = 0;
    for (std::size_t& start : starts) {
        const std::size_t inDigit = start;
        start = next;
        next += inDigit;
    }
    for (const CodedItem& item : from) to[starts[digit(item)]++] = item;
}

}  // namespace

std::vector<unsigned> gsl_MortonOrder(const gsl_BBox* boxes, std::size_t count) {
    gsl_BBox bounds;
    for (std::size_t i = 0; i != count; ++i) bounds.Add(boxes[i]);
    const CentreGrid grid(bounds);
    std::vector<CodedItem> items(count);
    for (std::size_t i = 0; i != count; ++i) {
        items[i] = {grid.Code(boxes[i]), static_cast<unsigned>(i)};
    }
    std::vector<CodedItem> sorted(count);
    for (unsigned axis = 0; axis < 3; ++axis) {
        SortByDigit(items, sorted, axis * gridBits);
        items.swap(sorted);
    }
    std::vector<unsigned> order(count);
    for (std::size_t i = 0; i != count; ++i) order[i] = items[i].item;
    return order;
}
