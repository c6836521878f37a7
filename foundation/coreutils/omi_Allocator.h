#pragma once

#include <cstddef>
#include <limits>
#include <new>

#include "foundation/alloc/mem_Alloc.h"

/// Lets a standard container keep its elements in storage of the foundation allocator; small blocks
/// come from its header-free cells. Stateless: storage of one may be returned through any other.
template <class T>
class omi_Allocator {
  public:
    using value_type = T;

    omi_Allocator() noexcept = default;
    template <class U>
    omi_Allocator(const omi_Allocator<U>&) noexcept {}

    /// Storage for `count` elements. Throws `std::bad_alloc` when memory is exhausted.
    [[nodiscard]] T* allocate(std::size_t count) {
        static_assert(alignof(T) <= 8, "cells are aligned to 8 bytes");
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) throw std::bad_alloc();
        return static_cast<T*>(mem_OperatorNewTinyThrow(count * sizeof(T)));
    }
    void deallocate(T* storage, std::size_t count) noexcept {
        mem_OperatorDeleteTiny(storage, count * sizeof(T));
    }

    friend constexpr bool operator==(const omi_Allocator&, const omi_Allocator&) noexcept {
        return true;
    }
};
