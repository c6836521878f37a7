#include "host/import/imp_VertexWelder.h"

#include <bit>
#include <utility>

namespace {

constexpr std::size_t kFirstSlotCount = 64;

std::size_t Hash(const std::array<std::uint32_t, 3>& key) {
    std::uint64_t hash = 0;
    for (const std::uint32_t word : key) hash = (hash ^ word) * 0x9E3779B97F4A7C15u;
    return static_cast<std::size_t>(hash ^ hash >> 32);
}

}  // namespace

int imp_VertexWelder::Add(float x, float y, float z) {
    if (positions.size() / 3 * 2 >= slots.size()) Grow();
    const float position[3] = {x + 0.0f, y + 0.0f, z + 0.0f};  // -0 + 0 is 0
    const Key key = std::bit_cast<Key>(position);
    int& vertex = slots[FindSlot(key)];
    if (vertex < 0) {
        vertex = static_cast<int>(positions.size() / 3);
        positions.insert(positions.end(), position, position + 3);
    }
    return vertex;
}

std::vector<float> imp_VertexWelder::TakePositions() {
    slots.clear();
    return std::exchange(positions, {});
}

std::size_t imp_VertexWelder::FindSlot(const Key& key) const {
    const std::size_t mask = slots.size() - 1;
    std::size_t slot = Hash(key) & mask;
    for (; slots[slot] >= 0; slot = (slot + 1) & mask) {
        const float* vertex = &positions[static_cast<std::size_t>(slots[slot]) * 3];
        if (std::bit_cast<Key>(std::array{vertex[0], vertex[1], vertex[2]}) == key) break;
    }
    return slot;
}

void imp_VertexWelder::Grow() {
    slots.assign(slots.empty() ? kFirstSlotCount : slots.size() * 2, -1);
    for (std::size_t vertex = 0; vertex < positions.size() / 3; ++vertex) {
        const float* position = &positions[vertex * 3];
        const Key key = std::bit_cast<Key>(std::array{position[0], position[1], position[2]});
        slots[FindSlot(key)] = static_cast<int>(vertex);
    }
}
