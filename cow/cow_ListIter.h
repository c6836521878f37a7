#pragma once

#include "cow/cow_List.h"

/// Walks a list front to back over its content at the time of construction: the iterator holds its
/// own copy of the list (which shares the table), so the list may be written during the walk.
template <class T>
class cow_ListIter {
  public:
    explicit cow_ListIter(const cow_List<T>& walked) noexcept
        : list(walked), left(walked.Length()) {
        if (left > 0) Enter();
    }

    /// True past the last element.
    [[nodiscard]] bool IsDone() const noexcept { return left == 0; }
    /// Goes on to the next element; nothing once done.
    void Next() noexcept {
        if (left == 0 || --left == 0) return;
        if (++slot == list.storage.BlockSize()) Enter();
    }
    /// The element. REQUIRES: not `IsDone()`.
    [[nodiscard]] const T& Current() const noexcept { return block->Storage()[slot]; }

  private:
    /// Goes to the block of the first of the elements left.
    void Enter() noexcept {
        block = list.storage.BlockOf(list.Length() - left);
        slot = list.storage.SlotOf(list.Length() - left);
    }

    cow_List<T> list;
    const cow_ListBlock<T>* block = nullptr;
    int left;
    int slot = 0;
};
