#pragma once

#include <cstddef>
#include <memory>

#include "cow/cow_Counter.h"
#include "foundation/alloc/mem_Alloc.h"

/// One block of a `cow_List`: a counter and raw storage for B elements, of which the list
/// constructs and destroys those that it holds.
///
/// The header takes 16 bytes in the allocator's cells, so the headers of a list lie side by side,
/// apart from the storage: detaching a block table counts up all of them, and would otherwise touch
/// every element's cache line.
template <class T>
class cow_ListBlock {
  public:
    /// A new block with counter 1 and storage for 2^`shift` elements.
    [[nodiscard]] static cow_ListBlock* Make(int shift) {
        static_assert(alignof(T) <= alignof(std::max_align_t));
        std::unique_ptr<cow_ListBlock> block(new cow_ListBlock);
        block->storage = static_cast<T*>(mem_Malloc(sizeof(T) << shift));
        return block.release();
    }
    cow_ListBlock(const cow_ListBlock&) = delete;
    cow_ListBlock& operator=(const cow_ListBlock&) = delete;
    /// Frees the storage; destroys no element.
    ~cow_ListBlock() { mem_Free(storage); }

    static void* operator new(std::size_t bytes) { return mem_OperatorNewTinyThrow(bytes); }
    static void operator delete(void* block, std::size_t bytes) noexcept {
        mem_OperatorDeleteTiny(block, bytes);
    }

    cow_Counter count;
    T* storage = nullptr;

  private:
    cow_ListBlock() noexcept = default;
};
