#include "foundation/shared/bio_Buffer.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "foundation/alloc/mem_Alloc.h"

namespace {
constexpr std::size_t kSmallestCapacity = 64;
}

bio_Buffer::bio_Buffer(bio_Buffer&& other) noexcept
    : data(std::exchange(other.data, nullptr)),
      size(std::exchange(other.size, 0)),
      capacity(std::exchange(other.capacity, 0)) {}

bio_Buffer& bio_Buffer::operator=(bio_Buffer&& other) noexcept {
    bio_Buffer taken(std::move(other));
    std::swap(data, taken.data);
    std::swap(size, taken.size);
    std::swap(capacity, taken.capacity);
    return *this;
}

bio_Buffer::~bio_Buffer() { mem_Free(data); }

void bio_Buffer::Grow(std::size_t more) {
    if (more > std::numeric_limits<std::size_t>::max() / 4 - size) throw std::bad_alloc();
    const std::size_t wanted = std::max({size + more, capacity * 2, kSmallestCapacity});
    data = static_cast<std::byte*>(mem_Realloc(data, wanted));
    capacity = wanted;
}
