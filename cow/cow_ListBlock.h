#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "cow/cow_Counter.h"
#include "foundation/alloc/mem_Alloc.h"

/// One block of a `cow_List`: a counter and raw storage for B elements, of which the list
/// constructs and destroys those that it holds.
///
/// Headers take 16 bytes and lie apart from the storage, side by side: detaching a block table
/// counts up all of them, and would otherwise touch a cache line of every block. A growing list
/// takes its blocks from groups, one request to the allocator for several headers and their
/// storage; a group is freed with the last of its blocks.
template <class T>
class cow_ListBlock {
  public:
    /// A new block by itself, with counter 1 and storage for `elements` elements.
    [[nodiscard]] static cow_ListBlock* Make(int elements);
    /// The first block of a new group of `size` blocks, with counter 1.
    [[nodiscard]] static cow_ListBlock* MakeGroup(int elements, int size);
    /// The next unused block of the group that this block belongs to, with counter 1; null when
    /// there is none.
    [[nodiscard]] cow_ListBlock* TakeNext(int elements) noexcept;
    /// Frees a block, which nobody refers to any more; destroys no element.
    static void Free(cow_ListBlock* block) noexcept;

    cow_ListBlock(const cow_ListBlock&) = delete;
    cow_ListBlock& operator=(const cow_ListBlock&) = delete;

    [[nodiscard]] T* Storage() const noexcept { return storage; }

    cow_Counter count;

  private:
    static constexpr std::int32_t ungrouped = -1;
    /// Stands before the headers of its blocks, which the storage follows.
    struct alignas(16) Group {
        std::int32_t live;
        std::int32_t used;
        std::int32_t size;
    };
    static_assert(alignof(T) <= alignof(std::max_align_t));

    cow_ListBlock(std::int32_t index, T* elements) noexcept : place(index), storage(elements) {}
    ~cow_ListBlock() = default;
    [[nodiscard]] Group* GroupOf() noexcept { return reinterpret_cast<Group*>(this - place) - 1; }
    static cow_ListBlock* Take(Group* group, int elements) noexcept;

    std::int32_t place;  ///< index in the group, or `ungrouped`
    T* storage;
};

template <class T>
cow_ListBlock<T>* cow_ListBlock<T>::Make(int elements) {
    void* const header = mem_OperatorNewTinyThrow(sizeof(cow_ListBlock));
    try {
        void* const storage = mem_Malloc(sizeof(T) * static_cast<std::size_t>(elements));
        return ::new (header) cow_ListBlock(ungrouped, static_cast<T*>(storage));
    } catch (...) {
        mem_OperatorDeleteTiny(header, sizeof(cow_ListBlock));
        throw;
    }
}

template <class T>
cow_ListBlock<T>* cow_ListBlock<T>::MakeGroup(int elements, int size) {
    const std::size_t blockBytes =
        sizeof(cow_ListBlock) + sizeof(T) * static_cast<std::size_t>(elements);
    void* const memory = mem_Malloc(sizeof(Group) + blockBytes * static_cast<std::size_t>(size));
    return Take(::new (memory) Group{0, 0, size}, elements);
}

template <class T>
cow_ListBlock<T>* cow_ListBlock<T>::TakeNext(int elements) noexcept {
    if (place == ungrouped) return nullptr;
    Group* const group = GroupOf();
    return group->used == group->size ? nullptr : Take(group, elements);
}

template <class T>
cow_ListBlock<T>* cow_ListBlock<T>::Take(Group* group, int elements) noexcept {
    cow_ListBlock* const headers = reinterpret_cast<cow_ListBlock*>(group + 1);
    T* const firstStorage = reinterpret_cast<T*>(headers + group->size);
    const std::int32_t index = group->used++;
    ++group->live;
    return ::new (headers + index)
        cow_ListBlock(index, firstStorage + static_cast<std::ptrdiff_t>(index) * elements);
}

template <class T>
void cow_ListBlock<T>::Free(cow_ListBlock* block) noexcept {
    if (block->place == ungrouped) {
        mem_Free(block->storage);
        mem_OperatorDeleteTiny(block, sizeof(cow_ListBlock));
        return;
    }
    Group* const group = block->GroupOf();
    if (block->place == group->used - 1) --group->used;
    if (--group->live == 0) mem_Free(group);
}
