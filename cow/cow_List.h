#pragma once

#include <algorithm>
#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

#include "cow/cow_DetachCount.h"
#include "cow/cow_ListBlock.h"
#include "cow/cow_RaiseOutOfRange.h"
#include "foundation/coreutils/cow_Forward.h"

/// Selects the constructor of `cow_List` that makes copies of one value.
struct cow_ListFill {
    explicit cow_ListFill() = default;
};

/// Whether `==` of `T` holds for every value and itself, so that equal storage means equal content.
/// Specialise it for a class type of which that is true; it is not for a floating-point number.
template <class T>
inline constexpr bool cow_HasReflexiveEquality =
    std::is_integral_v<T> || std::is_enum_v<T> || std::is_pointer_v<T>;

namespace cow_detail {

/// The counter of a list's block table, and where elements can be appended without looking at the
/// table: while `Length()` is less than `appendEnd`, the table and the last block are private, and
/// the slot for the next element is `appendStorage[Length() + appendOffset]`.
template <class T>
class ListTableHead : public cow_Counter {
  public:
    std::int32_t appendEnd = 0;
    std::uintptr_t appendBase = 0;

    static void* operator new(std::size_t bytes) { return mem_OperatorNewTinyThrow(bytes); }
    static void operator delete(void* head, std::size_t bytes) noexcept {
        mem_OperatorDeleteTiny(head, bytes);
    }
};

}  // namespace cow_detail

/// How a list lies in its block table; for tests and diagnosis.
struct cow_ListLayout {
    int blockSlots = 0;  ///< entries of the block table
    int blockShift = 0;  ///< a block holds 2^blockShift elements
    int start = 0;       ///< position of element 0 in the concatenation of all blocks
};

/// A list of any copyable `T`, held in blocks and copied on write.
///
/// The list is shared at two levels: a copy shares the whole block table and costs one increment;
/// the first write to either copy makes its table private (one pointer and one increment a block),
/// and then only the blocks that it touches. `Append` in a private last block, indexing and
/// iteration are inlined; inserting and removing move the elements of the shorter side; `Prepend`
/// is amortised O(1). Blocks hold 16 elements, or 1/16 to 1/8 of a size hint of 256 and more: give
/// the hint where the size is known and the list is read at random or seldom copied for writing.
///
/// References into a list are valid until it or a copy sharing their block is written or destroyed.
/// Indices count from 0; an index out of range ends the process (`RaiseOutOfRange`). Exhaustion,
/// and a `T` whose copy throws, leave the list as it was, except that `InsertIndex` and
/// `RemoveIndex` may have moved some elements already (one is then there twice, none is lost or
/// half made). Counters are plain integers: lists that share storage belong to one thread at a
/// time.
template <class T>
class cow_List {
    using Block = cow_ListBlock<T>;
    using TableHead = cow_detail::ListTableHead<T>;

  public:
    class const_iterator;
    using value_type = T;
    using iterator = const_iterator;

    /// The empty list.
    cow_List() : tableCount(new TableHead) {}
    /// One to five elements. `cow_List<int>(5)` is the list of the one element 5.
    explicit cow_List(const T& a) : cow_List(SizeHint{1}) { AppendAll(a); }
    cow_List(const T& a, const T& b) : cow_List(SizeHint{2}) { AppendAll(a, b); }
    cow_List(const T& a, const T& b, const T& c) : cow_List(SizeHint{3}) { AppendAll(a, b, c); }
    cow_List(const T& a, const T& b, const T& c, const T& d) : cow_List(SizeHint{4}) {
        AppendAll(a, b, c, d);
    }
    cow_List(const T& a, const T& b, const T& c, const T& d, const T& e) : cow_List(SizeHint{5}) {
        AppendAll(a, b, c, d, e);
    }
    /// Copies of `count` elements of the array. A `sizeHint` of 0 means that `count` is the hint; a
    /// negative one is none.
    cow_List(const T* elements, int count, int sizeHint = 0)
        : cow_List(SizeHint{sizeHint == 0 ? count : sizeHint}) {
        SetFromArray(elements, count);
    }
    /// `count` copies of `value`; the hint is `count`.
    cow_List(cow_ListFill, int count, const T& value) : cow_List(SizeHint{count}) {
        Fill(count, value);
    }
    /// Shares the storage of `other`.
    cow_List(const cow_List& other) noexcept;
    ~cow_List() { Release(); }
    cow_List& operator=(const cow_List& other) noexcept;

    /// The empty list prepared for `sizeHint` elements: decides the block size. None when 0 or
    /// less.
    [[nodiscard]] static cow_List WithSizeHint(int sizeHint) {
        return cow_List(SizeHint{sizeHint});
    }

    [[nodiscard]] int Length() const noexcept { return length; }
    [[nodiscard]] bool IsEmpty() const noexcept { return length == 0; }
    /// Returns `i` when it is the index of an element, else ends the process.
    int CheckIndex(int i) const noexcept;
    /// The element at `i`, checked; never detaches.
    [[nodiscard]] const T& operator[](int i) const noexcept { return *Slot(CheckIndex(i)); }
    [[nodiscard]] const T& ConstGet(int i) const noexcept { return *Slot(CheckIndex(i)); }
    /// The element at `i` for writing, checked; makes the table and the block that holds it
    /// private.
    [[nodiscard]] T& Get(int i) { return UncheckedGet(CheckIndex(i)); }
    /// As `ConstGet` and `Get` without the check. REQUIRES: 0 <= `i` < `Length()`.
    [[nodiscard]] const T& UncheckedConstGet(int i) const noexcept { return *Slot(i); }
    [[nodiscard]] T& UncheckedGet(int i);
    /// The first and the last element, checked.
    [[nodiscard]] const T& First() const noexcept { return ConstGet(0); }
    [[nodiscard]] const T& Last() const noexcept { return ConstGet(length - 1); }

    /// Adds a copy of `x` at the end; `x` may be an element of the list.
    void Append(const T& x);
    /// Adds a copy of `x` in front; `x` may be an element of the list.
    void Prepend(const T& x);
    /// Inserts a copy of `x` before element `i`, 0 <= `i` <= `Length()`.
    void InsertIndex(int i, const T& x);
    void RemoveIndex(int i);
    void RemoveFirst() { RemoveIndex(0); }
    void RemoveLast() { RemoveIndex(length - 1); }
    /// Removes the last element and returns a copy of it.
    T Pop();
    /// Removes all elements; the list then has blocks of 16 whatever its hint was.
    void Clear() { Resize(0); }
    /// Cuts the list to `n` elements, or reserves room for `n` (a negative `n` is 0).
    ///
    /// Kept: with `n` above the length the length stays; one would have expected new elements, as
    /// of other containers' resize. Callers use it to reserve.
    void Resize(int n);
    /// Replaces the content by `n` copies of `x`, which may be an element (a negative `n` is 0).
    void Fill(int n, const T& x);
    /// Replaces the content by copies of `n` elements of the array, which may be elements of this
    /// list (a negative `n` is 0).
    void SetFromArray(const T* elements, int n);
    /// Replaces the content by `n` elements that `construct(T* slots, int first, int count)` makes:
    /// `count` of them from index `first` on, all or none (a negative `n` is 0).
    template <class Construct>
    void SetFrom(int n, Construct&& construct) {
        Replace(n, construct);
    }
    /// Appends copies of the elements of `other`, which may be this list.
    void Concatenate(const cow_List& other);
    /// The elements from `first` up to but not including `last` as a new list.
    ///
    /// Kept: an index out of range is clamped to the list and an inverted range gives the empty
    /// list, where one would have expected the index check; callers slice without asking for the
    /// length.
    [[nodiscard]] cow_List Slice(int first, int last) const;

    /// The index of the first element equal to `x`, else -1.
    [[nodiscard]] int FindMember(const T& x) const;
    [[nodiscard]] bool IsMember(const T& x) const { return FindMember(x) >= 0; }
    /// Appends `x` unless it is a member; true when it was appended.
    bool AppendUnlessMember(const T& x);
    /// Removes the first element equal to `x`; false when there is none.
    bool RemoveMember(const T& x);
    /// True when both lists have equal elements in the same order.
    [[nodiscard]] bool IsEqual(const cow_List& other) const;
    /// The elements that are not members of `other`, in this list's order.
    [[nodiscard]] cow_List Difference(const cow_List& other) const;
    /// A new contiguous copy of the elements, whose number is put in `n`. The caller destroys the
    /// elements and returns the storage with `mem_Free`. Null for the empty list.
    [[nodiscard]] T* GetCArray(int& n) const;

    /// Calls `use(std::span<const T>)` for the elements block by block in order: the fastest walk.
    /// `use` must not write the list.
    template <class Use>
    void ForEachSpan(Use&& use) const;
    /// Forward iterators for range-for and algorithms; a write to the list invalidates them (walk
    /// with `cow_ListIter` to go on over the content as it was).
    [[nodiscard]] const_iterator begin() const noexcept { return const_iterator(*this, length); }
    [[nodiscard]] const_iterator end() const noexcept { return const_iterator(*this, 0); }

    [[nodiscard]] cow_ListLayout Layout() const noexcept { return {blockSlots, blockShift, start}; }

    friend bool operator==(const cow_List& a, const cow_List& b) { return a.IsEqual(b); }
    friend bool operator!=(const cow_List& a, const cow_List& b) { return !a.IsEqual(b); }

  private:
    template <class>
    friend class cow_ListIter;
    struct SizeHint {
        int elements;
    };
    /// A small element goes to a function by value, so that the caller can keep it in a register.
    using Passed = std::conditional_t<std::is_trivially_copyable_v<T> && sizeof(T) <= sizeof(void*),
                                      T, const T&>;
    static constexpr int defaultShift = 4;
    static constexpr int slotGroup = 16;
    static constexpr std::size_t largestGroupBytes = std::size_t{1} << 16;

    explicit cow_List(SizeHint hint) : cow_List() {
        if (hint.elements > 0) Initialize(hint.elements);
    }
    void Initialize(int sizeHint);
    template <class... Elements>
    void AppendAll(const Elements&... elements) {
        (Append(elements), ...);
    }

    [[nodiscard]] int BlockSize() const noexcept { return 1 << blockShift; }
    [[nodiscard]] T* Slot(int i) const noexcept {
        const unsigned position = static_cast<unsigned>(start) + static_cast<unsigned>(i);
        return table[position >> blockShift]->storage + (position & ((1u << blockShift) - 1));
    }
    /// Number of blocks that the positions up to `end` take.
    [[nodiscard]] std::int64_t BlocksUpTo(std::int64_t end) const noexcept {
        return (end + BlockSize() - 1) >> blockShift;
    }
    /// The entries of a table for the positions up to `end`.
    [[nodiscard]] int SlotsUpTo(std::int64_t end) const noexcept {
        return static_cast<int>((BlocksUpTo(end) + slotGroup - 1) / slotGroup * slotGroup);
    }
    /// Blocks whose positions all fit in 32 bits with one to spare behind them.
    [[nodiscard]] int BlockLimit() const noexcept { return INT_MAX >> blockShift; }

    void Release() noexcept {
        if (tableCount->Decrement() == 0) FreeAll();
    }
    void FreeAll() noexcept;
    void Swap(cow_List& other) noexcept;

    static Block** NewTable(int slots);
    void DetachTable() {
        if (tableCount->References() != 1) CopyTable();
        tableCount->appendEnd = 0;
    }
    void CopyTable();
    void GrowTable(int slots);
    void ShrinkTable(int slots) noexcept;
    void Reserve(std::int64_t n);
    void Truncate(int n);
    void MakeEmpty();
    [[nodiscard]] bool MustSlide(std::int64_t n) const noexcept;
    void SlideDown() noexcept;
    void Prefix();

    /// The elements of this list in block `index`, as slots from `.first` up to `.second`.
    [[nodiscard]] std::pair<int, int> LiveSlots(int index) const noexcept;
    void ReleaseBlock(int index) noexcept;
    [[gnu::noinline]] void FreeBlock(Block* block, int index) noexcept;
    /// A new block for entry `index`, one of `wanted` in a row.
    [[nodiscard]] Block* MakeBlock(int index, int wanted);
    void ReleaseBlocks(int first, int last) noexcept;
    /// Puts a private copy of the first `keep` slots' elements in place of block `index`.
    void CopyBlock(int index, int keep);
    void IsolateRange(std::int64_t first, std::int64_t last);
    [[gnu::noinline]] void AppendSlow(Passed x);
    int AddBlocks(int index);
    void AllowQuickAppend(int last) noexcept;
    void InsertTail(int i, const T& x);
    void InsertHead(int i, const T& x);

    /// Constructs `count` elements behind the last one, `fill(slots, first, n)` constructing n of
    /// them from the source's index `first`; all or none.
    template <class FillSlots>
    void AppendRun(int count, FillSlots&& fill);
    void DestroyFrom(int newLength) noexcept;
    template <class FillSlots>
    void Replace(int n, FillSlots&& fill);

    /// An element to move from where `T` moves without throwing, else to copy from.
    using Transferred = std::conditional_t<std::is_nothrow_move_constructible_v<T> &&
                                               std::is_nothrow_move_assignable_v<T>,
                                           T&&, const T&>;
    static Transferred Transfer(T* element) noexcept { return static_cast<Transferred>(*element); }

    std::int32_t length = 0;
    std::int32_t blockSlots = 0;
    std::int32_t blockShift = defaultShift;
    std::int32_t start = 0;
    TableHead* tableCount;
    Block** table = nullptr;
};

/// Walks a list forwards by a pointer into the current block.
template <class T>
class cow_List<T>::const_iterator {
  public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = const T*;
    using reference = const T&;

    const_iterator() noexcept = default;
    [[nodiscard]] const T& operator*() const noexcept { return *current; }
    [[nodiscard]] const T* operator->() const noexcept { return current; }
    const_iterator& operator++() noexcept {
        --left;
        if (++current == blockEnd && left > 0) EnterBlock(0);
        return *this;
    }
    const_iterator operator++(int) noexcept {
        const_iterator before = *this;
        ++*this;
        return before;
    }
    /// Iterators of one list are equal when as many elements are left.
    friend bool operator==(const const_iterator& a, const const_iterator& b) noexcept {
        return a.left == b.left;
    }

  private:
    friend class cow_List;
    const_iterator(const cow_List& list, int elementsLeft) noexcept
        : left(elementsLeft), blockSize(list.BlockSize()) {
        if (left == 0) return;
        entry = list.table + (list.start >> list.blockShift);
        EnterBlock(list.start & (blockSize - 1));
    }
    void EnterBlock(int slot) noexcept {
        const T* const storage = (*entry++)->storage;
        current = storage + slot;
        blockEnd = storage + blockSize;
    }

    const T* current = nullptr;
    const T* blockEnd = nullptr;
    Block* const* entry = nullptr;
    int left = 0;
    int blockSize = 0;
};

// Construction and sharing.

template <class T>
cow_List<T>::cow_List(const cow_List& other) noexcept
    : length(other.length),
      blockSlots(other.blockSlots),
      blockShift(other.blockShift),
      start(other.start),
      tableCount(other.tableCount),
      table(other.table) {
    tableCount->Increment();
    tableCount->appendEnd = 0;
}

template <class T>
cow_List<T>& cow_List<T>::operator=(const cow_List& other) noexcept {
    cow_List copy(other);
    Swap(copy);
    return *this;
}

template <class T>
void cow_List<T>::Swap(cow_List& other) noexcept {
    std::swap(length, other.length);
    std::swap(blockSlots, other.blockSlots);
    std::swap(blockShift, other.blockShift);
    std::swap(start, other.start);
    std::swap(tableCount, other.tableCount);
    std::swap(table, other.table);
}

// The exponent and the leading mantissa bits of the hint in single precision give the block size
// (1/16 to 1/8 of the hint) and the number of such blocks, rounded up.
template <class T>
void cow_List<T>::Initialize(int sizeHint) {
    constexpr std::uint32_t mantissaMask = 0x7FFFFF;
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(static_cast<float>(sizeHint));
    const int shift = static_cast<int>(bits >> 23) - 130;
    int shiftToUse = defaultShift;
    int slots = slotGroup;
    if (shift > defaultShift) {
        shiftToUse = shift;
        slots += static_cast<int>(((bits & mantissaMask) + 0x8FFFFF) >> 20);
    }
    table = NewTable(slots);
    blockShift = shiftToUse;
    blockSlots = slots;
}

template <class T>
void cow_List<T>::FreeAll() noexcept {
    for (int index = 0; index < blockSlots; ++index) {
        Block* const block = table[index];
        if (block && block->count.Decrement() == 0) FreeBlock(block, index);
    }
    mem_Free(table);
    delete tableCount;
}

// Access.

template <class T>
inline int cow_List<T>::CheckIndex(int i) const noexcept {
    if (static_cast<unsigned>(i) >= static_cast<unsigned>(length)) RaiseOutOfRange(i);
    return i;
}

template <class T>
inline T& cow_List<T>::UncheckedGet(int i) {
    const std::uint32_t position =
        static_cast<std::uint32_t>(start) + static_cast<std::uint32_t>(i);
    if (tableCount->References() != 1 || table[position >> blockShift]->count.References() != 1) {
        DetachTable();
        IsolateRange(i, i);
    }
    return *Slot(i);
}

template <class T>
template <class Use>
void cow_List<T>::ForEachSpan(Use&& use) const {
    const int blockSize = BlockSize();
    Block* const* entry = table + (start >> blockShift);
    int slot = start & (blockSize - 1);
    for (int left = length; left > 0; slot = 0, ++entry) {
        const int count = std::min(left, blockSize - slot);
        use(std::span<const T>((*entry)->storage + slot, static_cast<std::size_t>(count)));
        left -= count;
    }
}

// The block table.

// The storage of a table has room for the next power of two of entries, so that a growing list
// copies its table only now and then.
template <class T>
cow_ListBlock<T>** cow_List<T>::NewTable(int slots) {
    const std::size_t room = std::bit_ceil(static_cast<std::size_t>(slots));
    Block** const fresh = static_cast<Block**>(mem_Malloc(room * sizeof(Block*)));
    std::fill_n(fresh, slots, nullptr);
    return fresh;
}

template <class T>
void cow_List<T>::CopyTable() {
    std::unique_ptr<TableHead> fresh(new TableHead);
    if (table) {
        const std::size_t slots = static_cast<std::size_t>(blockSlots);
        Block** const copy =
            static_cast<Block**>(mem_Malloc(std::bit_ceil(slots) * sizeof(Block*)));
        for (std::size_t i = 0; i < slots; ++i) {
            copy[i] = table[i];
            if (copy[i]) copy[i]->count.Increment();
        }
        table = copy;
    }
    tableCount->Decrement();
    tableCount = fresh.release();
    cow_RecordDetach(0);
}

template <class T>
void cow_List<T>::GrowTable(int slots) {
    const std::size_t room = std::bit_ceil(static_cast<std::size_t>(slots));
    if (!table || room != std::bit_ceil(static_cast<std::size_t>(blockSlots))) {
        table = static_cast<Block**>(mem_Realloc(table, room * sizeof(Block*)));
    }
    std::fill(table + blockSlots, table + slots, nullptr);
    blockSlots = slots;
}

template <class T>
void cow_List<T>::ShrinkTable(int slots) noexcept {
    const std::size_t room = std::bit_ceil(static_cast<std::size_t>(slots));
    if (room != std::bit_ceil(static_cast<std::size_t>(blockSlots))) {
        try {
            table = static_cast<Block**>(mem_Realloc(table, room * sizeof(Block*)));
        } catch (const std::bad_alloc&) {  // the table keeps its room
        }
    }
    blockSlots = slots;
}

// Appending and removing in front (a queue) moves `start` up for ever. The pointers move down when
// the table would grow although more leading blocks are empty than are in use, with 16 left alone
// as the room that `Prefix` makes, and when a position would not fit in 32 bits.
template <class T>
bool cow_List<T>::MustSlide(std::int64_t n) const noexcept {
    const std::int64_t end = start + n;
    if (BlocksUpTo(end) > BlockLimit()) return true;
    if (SlotsUpTo(end) <= blockSlots) return false;
    const int leading = start >> blockShift;
    const std::int64_t used = BlocksUpTo(static_cast<std::int64_t>(start) + length) - leading;
    return leading > slotGroup + used;
}

template <class T>
void cow_List<T>::SlideDown() noexcept {
    const int leading = start >> blockShift;
    if (leading == 0) return;
    ReleaseBlocks(0, leading);
    std::copy(table + leading, table + blockSlots, table);
    std::fill(table + blockSlots - leading, table + blockSlots, nullptr);
    start &= BlockSize() - 1;
}

/// Makes the table private and long enough for `n` elements, rounded as the length asks.
template <class T>
void cow_List<T>::Reserve(std::int64_t n) {
    DetachTable();
    if (MustSlide(n)) SlideDown();
    const std::int64_t end = start + n;
    if (BlocksUpTo(end) > BlockLimit()) throw std::bad_alloc();
    const int slots = SlotsUpTo(end);
    if (slots > blockSlots) GrowTable(slots);
    // Blocks behind the end are empty; released backwards they go back to their group.
    for (int index = blockSlots; index > BlocksUpTo(end);) ReleaseBlock(--index);
    if (slots < blockSlots) ShrinkTable(slots);
}

template <class T>
void cow_List<T>::Resize(int n) {
    if (n <= 0) {
        MakeEmpty();
    } else if (n < length) {
        Truncate(n);
    } else {
        Reserve(n);
    }
}

template <class T>
void cow_List<T>::MakeEmpty() {
    if (tableCount->References() == 1) {
        ReleaseBlocks(0, blockSlots);
        mem_Free(table);
        tableCount->appendEnd = 0;
    } else {
        TableHead* const fresh = new TableHead;
        tableCount->Decrement();
        tableCount = fresh;
    }
    table = nullptr;
    length = 0;
    blockSlots = 0;
    blockShift = defaultShift;
    start = 0;
}

template <class T>
void cow_List<T>::Truncate(int n) {
    DetachTable();
    const std::int64_t end = static_cast<std::int64_t>(start) + n;
    const int slots = SlotsUpTo(end);
    if (slots > blockSlots) GrowTable(slots);
    const int last = static_cast<int>(BlocksUpTo(end)) - 1;
    const int keep = static_cast<int>(end - (static_cast<std::int64_t>(last) << blockShift));
    const auto [firstLive, endLive] = LiveSlots(last);
    if (keep < endLive) {
        if (table[last]->count.References() != 1) {
            CopyBlock(last, keep);
        } else {
            T* const storage = table[last]->storage;
            for (int slot = endLive; slot > keep;) std::destroy_at(storage + --slot);
        }
    }
    ReleaseBlocks(last + 1, blockSlots);
    length = n;
    if (slots < blockSlots) ShrinkTable(slots);
}

// Room in front: all free entries of the table move before the used ones.
template <class T>
void cow_List<T>::Prefix() {
    if (start > 0) {
        DetachTable();
        return;
    }
    const int used = static_cast<int>(BlocksUpTo(length));
    if (used == blockSlots) {
        Reserve((static_cast<std::int64_t>(used) << blockShift) + 1);
    } else {
        DetachTable();
    }
    ReleaseBlocks(used, blockSlots);
    const int room = std::min(blockSlots, BlockLimit()) - used;
    if (room <= 0) throw std::bad_alloc();
    std::copy_backward(table, table + used, table + used + room);
    std::fill(table, table + room, nullptr);
    start = room << blockShift;
}

// Blocks.

template <class T>
std::pair<int, int> cow_List<T>::LiveSlots(int index) const noexcept {
    const std::int64_t base = static_cast<std::int64_t>(index) << blockShift;
    const std::int64_t first = std::max<std::int64_t>(base, start);
    const std::int64_t end =
        std::min<std::int64_t>(base + BlockSize(), static_cast<std::int64_t>(start) + length);
    if (end <= first) return {0, 0};
    return {static_cast<int>(first - base), static_cast<int>(end - base)};
}

template <class T>
void cow_List<T>::ReleaseBlock(int index) noexcept {
    Block* const block = std::exchange(table[index], nullptr);
    if (block && block->count.Decrement() == 0) FreeBlock(block, index);
}

template <class T>
void cow_List<T>::FreeBlock(Block* block, int index) noexcept {
    if constexpr (!std::is_trivially_destructible_v<T>) {
        const auto [first, end] = LiveSlots(index);
        for (int slot = end; slot > first;) std::destroy_at(block->storage + --slot);
    }
    Block::Free(block);
}

template <class T>
void cow_List<T>::ReleaseBlocks(int first, int last) noexcept {
    for (int index = first; index < last; ++index) ReleaseBlock(index);
}

// Short lists take blocks one by one. A longer one, which is likely to go on growing, takes groups
// of up to an eighth of the blocks that it has.
template <class T>
cow_ListBlock<T>* cow_List<T>::MakeBlock(int index, int wanted) {
    const int elements = BlockSize();
    for (const int neighbour : {index - 1, index + 1}) {
        if (neighbour < 0 || neighbour >= blockSlots || !table[neighbour]) continue;
        if (Block* const block = table[neighbour]->TakeNext(elements)) return block;
    }
    const std::size_t blockBytes = sizeof(T) * static_cast<std::size_t>(elements);
    const int largest = static_cast<int>(largestGroupBytes / blockBytes);
    const int size = std::min(largest, std::max(wanted, (length >> blockShift) / 8));
    return size > 1 ? Block::MakeGroup(elements, size) : Block::Make(elements);
}

template <class T>
void cow_List<T>::CopyBlock(int index, int keep) {
    const auto [first, end] = LiveSlots(index);
    const int count = std::max(0, std::min(end, keep) - first);
    Block* const fresh = Block::Make(BlockSize());
    try {
        std::uninitialized_copy_n(table[index]->storage + first, count, fresh->storage + first);
    } catch (...) {
        Block::Free(fresh);
        throw;
    }
    table[index]->count.Decrement();
    table[index] = fresh;
    cow_RecordDetach(count);
}

/// Makes the blocks of the positions `first` to `last` (relative to element 0) present and private.
template <class T>
void cow_List<T>::IsolateRange(std::int64_t first, std::int64_t last) {
    const int lastIndex = static_cast<int>((start + last) >> blockShift);
    for (int index = static_cast<int>((start + first) >> blockShift); index <= lastIndex; ++index) {
        if (!table[index]) {
            table[index] = MakeBlock(index, lastIndex - index + 1);
        } else if (table[index]->count.References() != 1) {
            CopyBlock(index, BlockSize());
        }
    }
}

// Growing.

template <class T>
inline void cow_List<T>::Append(const T& x) {
    const TableHead* const head = tableCount;
    const int index = length;
    if (index < head->appendEnd) [[likely]] {
        const std::size_t offset = static_cast<std::size_t>(index) * sizeof(T);
        std::construct_at(reinterpret_cast<T*>(head->appendBase + offset), x);
        length = index + 1;
    } else {
        AppendSlow(x);
    }
}

// A list that is private and has the table that the new length asks for only needs a block.
template <class T>
void cow_List<T>::AppendSlow(Passed x) {
    const std::uint32_t position =
        static_cast<std::uint32_t>(start) + static_cast<std::uint32_t>(length);
    int index = static_cast<int>(position >> blockShift);
    if (tableCount->References() != 1 || (index | (slotGroup - 1)) + 1 != blockSlots) {
        Reserve(static_cast<std::int64_t>(length) + 1);
        index = (start + length) >> blockShift;
    }
    int last = index;
    if (!table[index]) {
        last = AddBlocks(index);
    } else if (table[index]->count.References() != 1) {
        CopyBlock(index, BlockSize());
    }
    std::construct_at(Slot(length), x);
    ++length;
    AllowQuickAppend(last);
}

// Puts a new block in entry `index`, and in the entries behind it what its group still has; their
// storage is contiguous. Returns the last of them.
template <class T>
int cow_List<T>::AddBlocks(int index) {
    Block* block = table[index] = MakeBlock(index, 1);
    while (index + 1 < blockSlots && !table[index + 1]) {
        block = block->TakeNext(BlockSize());
        if (!block) break;
        table[++index] = block;
    }
    return index;
}

// The blocks from the last element's to block `last` are private and their storage is contiguous.
template <class T>
void cow_List<T>::AllowQuickAppend(int last) noexcept {
    const std::uintptr_t slot = reinterpret_cast<std::uintptr_t>(Slot(length - 1));
    tableCount->appendBase = slot - static_cast<std::size_t>(length - 1) * sizeof(T);
    tableCount->appendEnd = ((last + 1) << blockShift) - start;
}

template <class T>
void cow_List<T>::Prepend(const T& x) {
    Prefix();
    if (length == INT_MAX) throw std::bad_alloc();
    IsolateRange(-1, -1);
    std::construct_at(Slot(-1), x);
    --start;
    ++length;
}

template <class T>
void cow_List<T>::InsertIndex(int i, const T& x) {
    if (i == length) return Append(x);
    if (i == 0) return Prepend(x);
    CheckIndex(i);
    const T copy(x);
    if (i >= length - i) {
        InsertTail(i, copy);
    } else {
        InsertHead(i, copy);
    }
}

template <class T>
void cow_List<T>::InsertTail(int i, const T& x) {
    Reserve(static_cast<std::int64_t>(length) + 1);
    IsolateRange(i, length);
    std::construct_at(Slot(length), Transfer(Slot(length - 1)));
    ++length;
    for (int k = length - 2; k > i; --k) *Slot(k) = Transfer(Slot(k - 1));
    *Slot(i) = x;
}

template <class T>
void cow_List<T>::InsertHead(int i, const T& x) {
    Prefix();
    IsolateRange(-1, i);
    std::construct_at(Slot(-1), Transfer(Slot(0)));
    --start;
    ++length;
    for (int k = 1; k < i; ++k) *Slot(k) = Transfer(Slot(k + 1));
    *Slot(i) = x;
}

template <class T>
template <class FillSlots>
void cow_List<T>::AppendRun(int count, FillSlots&& fill) {
    if (count <= 0) return;
    const int oldLength = length;
    Reserve(static_cast<std::int64_t>(length) + count);
    IsolateRange(length, static_cast<std::int64_t>(length) + count - 1);
    try {
        for (int done = 0; done < count;) {
            const int room = BlockSize() - ((start + length) & (BlockSize() - 1));
            const int n = std::min(room, count - done);
            fill(Slot(length), done, n);
            length += n;
            done += n;
        }
    } catch (...) {
        DestroyFrom(oldLength);
        throw;
    }
}

template <class T>
void cow_List<T>::DestroyFrom(int newLength) noexcept {
    while (length > newLength) std::destroy_at(Slot(--length));
}

// The new content is built beside the old one, in blocks of the same size and from the same start,
// so that the source may lie in this list and a failure changes nothing.
template <class T>
template <class FillSlots>
void cow_List<T>::Replace(int n, FillSlots&& fill) {
    if (n <= 0) return MakeEmpty();
    cow_List fresh;
    fresh.blockShift = blockShift;
    fresh.start = MustSlide(n) ? start & (BlockSize() - 1) : start;
    fresh.GrowTable(fresh.SlotsUpTo(static_cast<std::int64_t>(fresh.start) + n));
    fresh.AppendRun(n, fill);
    Swap(fresh);
}

template <class T>
void cow_List<T>::Fill(int n, const T& x) {
    Replace(n, [&x](T* slots, int, int count) { std::uninitialized_fill_n(slots, count, x); });
}

template <class T>
void cow_List<T>::SetFromArray(const T* elements, int n) {
    Replace(n, [elements](T* slots, int first, int count) {
        std::uninitialized_copy_n(elements + first, count, slots);
    });
}

template <class T>
void cow_List<T>::Concatenate(const cow_List& other) {
    AppendRun(other.length, [&other](T* slots, int first, int count) {
        int built = 0;
        try {
            for (; built < count; ++built) {
                std::construct_at(slots + built, other.ConstGet(first + built));
            }
        } catch (...) {
            std::destroy_n(slots, built);
            throw;
        }
    });
}

// Shrinking.

template <class T>
void cow_List<T>::RemoveIndex(int i) {
    CheckIndex(i);
    DetachTable();
    if (i >= length - i) {
        IsolateRange(i, length - 1);
        for (int k = i; k < length - 1; ++k) *Slot(k) = Transfer(Slot(k + 1));
        std::destroy_at(Slot(length - 1));
        --length;
        const int end = start + length;
        if ((end & (BlockSize() - 1)) == 0) ReleaseBlock(end >> blockShift);
    } else {
        IsolateRange(0, i);
        for (int k = i; k > 0; --k) *Slot(k) = Transfer(Slot(k - 1));
        std::destroy_at(Slot(0));
        const int first = start++;
        --length;
        // The block of the only element is empty too, wherever in the block it stood.
        if (length == 0 || (start & (BlockSize() - 1)) == 0) ReleaseBlock(first >> blockShift);
    }
}

template <class T>
T cow_List<T>::Pop() {
    T last(Last());
    RemoveLast();
    return last;
}

// Searching and deriving.

template <class T>
cow_List<T> cow_List<T>::Slice(int first, int last) const {
    const int from = std::max(first, 0);
    const int hi = std::min(std::max(last, from), length);
    const int lo = std::min(from, hi);
    cow_List slice(SizeHint{hi - lo});
    for (int i = lo; i < hi; ++i) slice.Append(*Slot(i));
    return slice;
}

template <class T>
int cow_List<T>::FindMember(const T& x) const {
    int index = 0;
    for (const T& element : *this) {
        if (element == x) return index;
        ++index;
    }
    return -1;
}

template <class T>
bool cow_List<T>::AppendUnlessMember(const T& x) {
    if (IsMember(x)) return false;
    Append(x);
    return true;
}

template <class T>
bool cow_List<T>::RemoveMember(const T& x) {
    const int index = FindMember(x);
    if (index < 0) return false;
    RemoveIndex(index);
    return true;
}

template <class T>
bool cow_List<T>::IsEqual(const cow_List& other) const {
    if (length != other.length) return false;
    if constexpr (cow_HasReflexiveEquality<T>) {
        if (table == other.table && start == other.start) return true;
    }
    return std::equal(begin(), end(), other.begin());
}

template <class T>
cow_List<T> cow_List<T>::Difference(const cow_List& other) const {
    cow_List result;
    for (const T& element : *this) {
        if (!other.IsMember(element)) result.Append(element);
    }
    return result;
}

template <class T>
T* cow_List<T>::GetCArray(int& n) const {
    n = 0;
    if (length == 0) return nullptr;
    struct FreeStorage {
        void operator()(T* storage) const noexcept { mem_Free(storage); }
    };
    std::unique_ptr<T, FreeStorage> array(
        static_cast<T*>(mem_Malloc(static_cast<std::size_t>(length) * sizeof(T))));
    std::uninitialized_copy(begin(), end(), array.get());
    n = length;
    return array.release();
}
