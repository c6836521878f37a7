#pragma once

#include <cstddef>

#include "foundation/alloc/mem_Alloc.h"

/// Base of nodes: their storage comes from the tiny cells of the allocator. `Node` is the derived
/// class; one that needs more than the cells' alignment of 8 bytes takes ordinary storage.
template <class Node>
class cow_TinyAllocated {
  public:
    static void* operator new(std::size_t bytes) {
        static_assert(alignof(Node) <= alignof(std::max_align_t));
        return alignof(Node) <= 8 ? mem_OperatorNewTinyThrow(bytes) : mem_Malloc(bytes);
    }
    static void operator delete(void* node, std::size_t bytes) noexcept {
        if (alignof(Node) <= 8) {
            mem_OperatorDeleteTiny(node, bytes);
        } else {
            mem_Free(node);
        }
    }
};
