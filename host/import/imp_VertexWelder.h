#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Gives equal positions one vertex number, so that triangles which share a corner know it.
/// Positions are equal when all three coordinates are; no tolerance takes part, and -0 becomes 0.
class imp_VertexWelder {
  public:
    /// The number of the vertex at the position: a new one when no vertex was there yet.
    [[nodiscard]] int Add(float x, float y, float z);

    /// x, y, z of every vertex so far; the welder is empty afterwards.
    [[nodiscard]] std::vector<float> TakePositions();

  private:
    using Key = std::array<std::uint32_t, 3>;
    [[nodiscard]] std::size_t FindSlot(const Key& key) const;
    void Grow();

    std::vector<float> positions;
    std::vector<int> slots;  ///< open addressing; a power of two, vertex numbers, -1 free
};
