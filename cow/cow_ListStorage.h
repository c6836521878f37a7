#pragma once

#include <algorithm>
#include <bit>
#include <climits>
#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

#include "cow/cow_Counter.h"
#include "cow/cow_DetachCount.h"
#include "cow/cow_ListBlock.h"
#include "foundation/alloc/mem_Alloc.h"

/// How a list lies in its block table; for tests and diagnosis.
struct cow_ListLayout {
    int blockSlots = 0;  ///< entries of the block table
    int blockShift = 0;  ///< a block holds 2^blockShift elements
    int start = 0;       ///< position of element 0 in the concatenation of all blocks
};

/// The counter of a list's block table and what else belongs to the table: where elements can be
/// appended without looking at it. While the list is shorter than `appendEnd`, the table and the
/// last block are private, and element i goes to the address `appendBase` + i * sizeof(T).
class cow_ListTableHead : public cow_Counter {
  public:
    std::int32_t appendEnd = 0;
    std::uintptr_t appendBase = 0;
    std::int32_t room = 0;  ///< entries that the storage of the table has room for
};

/// Where the elements of a `cow_List` lie: blocks of 2^`blockShift` elements in a table of pointers
/// to them. Copies share the table, and tables that were copied share the blocks.
///
/// Blocks whose storage lies in a row are read as one run, without the way through their headers:
/// 16 small blocks of one slot group, or a single larger block.
///
/// A position counts from element 0 and may be -1 or the length where room is made for a new
/// element. Nothing is checked here; what is written must be private before (`DetachTable`,
/// `IsolateRange`). Everything that may throw leaves the elements as they were, at most with empty
/// blocks behind or before them.
template <class T>
class cow_ListStorage {
  public:
    using Block = cow_ListBlock<T>;

    cow_ListStorage() : tableCount(new cow_ListTableHead) {}
    /// No elements, in blocks and a table for `sizeHint` of them; 0 or less is no hint.
    explicit cow_ListStorage(int sizeHint) : cow_ListStorage() {
        if (sizeHint > 0) Initialize(sizeHint);
    }
    /// Shares the table of `other`.
    cow_ListStorage(const cow_ListStorage& other) noexcept;
    ~cow_ListStorage() {
        if (tableCount->Decrement() != 0) return;
        FreeBlocks();
        delete tableCount;
    }
    cow_ListStorage& operator=(const cow_ListStorage& other) noexcept;
    void Swap(cow_ListStorage& other) noexcept;

    [[nodiscard]] int Length() const noexcept { return length; }
    [[nodiscard]] cow_ListLayout Layout() const noexcept { return {blockSlots, blockShift, start}; }
    [[nodiscard]] int BlockSize() const noexcept { return 1 << blockShift; }
    /// True when both hold the same elements in the same places.
    [[nodiscard]] bool Shares(const cow_ListStorage& other) const noexcept {
        return table == other.table && start == other.start && length == other.length;
    }

    /// The element at `i`, and the block and the slot in it where that lies.
    [[nodiscard]] T& At(int i) const noexcept { return *Slot(i); }
    [[nodiscard]] const Block* BlockOf(int i) const noexcept { return table[IndexOf(i)]; }
    [[nodiscard]] int SlotOf(int i) const noexcept {
        return static_cast<int>(PositionOf(i)) & (BlockSize() - 1);
    }
    /// The elements from `i` on that lie side by side.
    [[nodiscard]] std::span<T> SpanFrom(int i) const noexcept;
    /// The element at `i` after making the table and its block private.
    [[nodiscard]] T& Writable(int i);

    /// Makes the table private.
    void DetachTable() {
        if (tableCount->References() != 1) CopyTable();
        tableCount->appendEnd = 0;
    }
    /// Makes the table private and long enough for `n` elements, rounded as that length asks.
    void Reserve(std::int64_t n);
    /// Room in front of element 0 in a private table.
    void Prefix();
    /// Makes the blocks of the positions `first` to `last` present and private.
    void IsolateRange(std::int64_t first, std::int64_t last);

    /// Adds a copy of `x`, which may be an element, at the end.
    void Append(const T& x);
    /// Constructs an element from `x` at the end, or in front, where room was made and isolated.
    template <class X>
    void AddLast(X&& x);
    template <class X>
    void AddFirst(X&& x);
    /// Constructs `count` elements at the end, `fill(slots, first, n)` constructing n of them from
    /// the source's index `first`; all or none.
    template <class FillSlots>
    void AppendRun(int count, FillSlots&& fill);
    /// Puts `n` elements, constructed as by `AppendRun`, in place of all. They are built beside the
    /// old ones, so that the source may lie among these and a failure changes nothing.
    template <class FillSlots>
    void Replace(int n, FillSlots&& fill);

    /// Destroys the last or the first element, which must be private, and releases its block when
    /// that became empty.
    void DropLast() noexcept;
    void DropFirst() noexcept;
    /// Keeps the first `n` elements, 0 < n < length.
    void Truncate(int n);
    /// Destroys all elements and goes back to the default block size. Takes memory only when the
    /// table is shared.
    void Clear();

  private:
    /// A small element goes to a function by value, so that the caller can keep it in a register.
    using Passed = std::conditional_t<std::is_trivially_copyable_v<T> && sizeof(T) <= sizeof(void*),
                                      T, const T&>;
    static constexpr int defaultShift = 4;
    static constexpr int slotGroupShift = 4;
    static constexpr int slotGroup = 1 << slotGroupShift;
    static constexpr std::size_t largestGroupBytes = std::size_t{1} << 16;

    void Initialize(int sizeHint);
    /// Frees the blocks and the table, which no other storage has.
    void FreeBlocks() noexcept;

    [[nodiscard]] std::uint32_t PositionOf(int i) const noexcept {
        return static_cast<std::uint32_t>(start) + static_cast<std::uint32_t>(i);
    }
    [[nodiscard]] int IndexOf(int i) const noexcept {
        return static_cast<int>(PositionOf(i) >> blockShift);
    }
    [[nodiscard]] T* Slot(int i) const noexcept {
        const std::uint32_t position = PositionOf(i);
        const int runShift = blockShift + RunBlockShift();
        if (T* const run = RunOf(static_cast<int>(position >> runShift))) [[likely]] {
            return run + (position & ((1u << runShift) - 1));
        }
        return table[position >> blockShift]->Storage() + (position & ((1u << blockShift) - 1));
    }
    /// A run is of 2^`RunBlockShift()` blocks.
    [[nodiscard]] int RunBlockShift() const noexcept {
        return blockShift == defaultShift ? slotGroupShift : 0;
    }
    [[nodiscard]] int RunBlocks() const noexcept { return 1 << RunBlockShift(); }
    /// Runs in a table of so many entries.
    [[nodiscard]] int RunCount(int slots) const noexcept {
        return (slots + RunBlocks() - 1) >> RunBlockShift();
    }
    /// Where run `run` begins; null unless all its blocks are there and their headers and their
    /// storage each lie in a row. These pointers stand before the table, backwards.
    [[nodiscard]] T*& RunOf(int run) const noexcept {
        return RunsEnd()[-1 - static_cast<std::ptrdiff_t>(run)];
    }
    [[nodiscard]] T** RunsEnd() const noexcept { return reinterpret_cast<T**>(table); }
    /// Number of blocks that the positions up to `end` in the block space take.
    [[nodiscard]] std::int64_t BlocksUpTo(std::int64_t end) const noexcept {
        return (end + BlockSize() - 1) >> blockShift;
    }
    /// The entries of a table for the positions up to `end` in the block space.
    [[nodiscard]] int SlotsUpTo(std::int64_t end) const noexcept {
        return static_cast<int>((BlocksUpTo(end) + slotGroup - 1) / slotGroup * slotGroup);
    }
    /// Blocks whose positions all fit in 32 bits with one to spare behind them.
    [[nodiscard]] int BlockLimit() const noexcept { return INT_MAX >> blockShift; }

    [[nodiscard]] static int RoomFor(int slots) noexcept;
    [[nodiscard]] Block** NewTable(int room) const;
    void FreeTable() noexcept;
    void CopyTable();
    void MoveTable(int room);
    void GrowTable(int slots);
    void ShrinkTable(int slots) noexcept;
    void PutBlock(int index, Block* block) noexcept;
    void MarkRuns(int first, int last) noexcept;
    void MarkAllRuns() noexcept;
    void ShareBlocks() const noexcept;
    /// Whether the slot group that begins at entry `first` is a run of 16 blocks. Its headers are
    /// then counted without looking at the table, which a large list does often enough to matter.
    [[nodiscard]] bool IsRunOfGroup(int first) const noexcept {
        return RunBlocks() == slotGroup && RunOf(first >> slotGroupShift);
    }
    using EachOfGroup = std::make_integer_sequence<int, slotGroup>;
    template <int... i>
    static void ShareRun(Block* headers, std::integer_sequence<int, i...>) noexcept;
    /// Takes one reference from each block of a run; true when one of them has none left.
    template <int... i>
    static bool UnshareRun(Block* headers, std::integer_sequence<int, i...>) noexcept;
    [[nodiscard]] bool MustSlide(std::int64_t n) const noexcept;
    void SlideDown() noexcept;

    /// The elements of this list in block `index`, as slots from `.first` up to `.second`.
    [[nodiscard]] std::pair<int, int> LiveSlots(int index) const noexcept;
    void ReleaseBlock(int index) noexcept;
    [[gnu::noinline]] void FreeBlock(Block* block, int index) noexcept;
    void ReleaseBlocks(int first, int last) noexcept;
    void ReleaseEmptyBlocks(std::int64_t first) noexcept;
    /// A new block for entry `index`, one of `wanted` in a row.
    [[nodiscard]] Block* MakeBlock(int index, int wanted);
    int AddBlocks(int index, int wanted);
    /// Puts a private copy of the first `keep` slots' elements in place of block `index`.
    void CopyBlock(int index, int keep);
    [[gnu::noinline]] void AppendSlow(Passed x);
    void AllowQuickAppend(int last) noexcept;

    std::int32_t length = 0;
    std::int32_t blockSlots = 0;
    std::int32_t blockShift = defaultShift;
    std::int32_t start = 0;
    cow_ListTableHead* tableCount;
    Block** table = nullptr;
};

// Construction and sharing.

template <class T>
cow_ListStorage<T>::cow_ListStorage(const cow_ListStorage& other) noexcept
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
cow_ListStorage<T>& cow_ListStorage<T>::operator=(const cow_ListStorage& other) noexcept {
    cow_ListStorage copy(other);
    Swap(copy);
    return *this;
}

template <class T>
void cow_ListStorage<T>::Swap(cow_ListStorage& other) noexcept {
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
void cow_ListStorage<T>::Initialize(int sizeHint) {
    constexpr std::uint32_t mantissaMask = 0x7FFFFF;
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(static_cast<float>(sizeHint));
    const int shift = static_cast<int>(bits >> 23) - 130;
    int shiftToUse = defaultShift;
    int slots = slotGroup;
    if (shift > defaultShift) {
        shiftToUse = shift;
        slots += static_cast<int>(((bits & mantissaMask) + 0x8FFFFF) >> 20);
    }
    blockShift = shiftToUse;
    GrowTable(slots);
}

template <class T>
void cow_ListStorage<T>::FreeBlocks() noexcept {
    for (int first = 0; first < blockSlots; first += slotGroup) {
        if (!IsRunOfGroup(first)) {
            ReleaseBlocks(first, std::min(first + slotGroup, blockSlots));
        } else if (UnshareRun(table[first], EachOfGroup())) {
            Block* const headers = table[first];
            for (int i = 0; i < slotGroup; ++i) {
                if (headers[i].count.References() == 0) FreeBlock(headers + i, first + i);
            }
        }
    }
    FreeTable();
}

template <class T>
std::span<T> cow_ListStorage<T>::SpanFrom(int i) const noexcept {
    T* const run = RunOf(IndexOf(i) >> RunBlockShift());
    T* const first = run ? run : BlockOf(i)->Storage();
    const int size = run ? BlockSize() << RunBlockShift() : BlockSize();
    const int slot = static_cast<int>(PositionOf(i)) & (size - 1);
    return {first + slot, static_cast<std::size_t>(std::min(size - slot, length - i))};
}

template <class T>
inline T& cow_ListStorage<T>::Writable(int i) {
    if (tableCount->References() != 1 || BlockOf(i)->count.References() != 1) {
        DetachTable();
        IsolateRange(i, i);
    }
    return *Slot(i);
}

// The block table.

// The storage of a table has room for a power of two of entries, so that a growing list copies its
// table only now and then, and before them for the pointers to runs.
template <class T>
int cow_ListStorage<T>::RoomFor(int slots) noexcept {
    return static_cast<int>(std::bit_ceil(static_cast<unsigned>(std::max(slots, slotGroup))));
}

template <class T>
cow_ListBlock<T>** cow_ListStorage<T>::NewTable(int room) const {
    const std::size_t entries = static_cast<std::size_t>(room + RunCount(room));
    return static_cast<Block**>(mem_Malloc(entries * sizeof(Block*))) + RunCount(room);
}

template <class T>
void cow_ListStorage<T>::FreeTable() noexcept {
    if (table) mem_Free(table - RunCount(tableCount->room));
}

template <class T>
void cow_ListStorage<T>::CopyTable() {
    std::unique_ptr<cow_ListTableHead> fresh(new cow_ListTableHead);
    if (table) {
        fresh->room = RoomFor(blockSlots);
        Block** const copy = NewTable(fresh->room);
        const int runs = RunCount(blockSlots);
        std::copy(table - runs, table + blockSlots, copy - runs);
        ShareBlocks();
        table = copy;
    }
    tableCount->Decrement();
    tableCount = fresh.release();
    cow_RecordDetach(0);
}

/// Moves the private table to storage with `room` entries.
template <class T>
void cow_ListStorage<T>::MoveTable(int room) {
    Block** const moved = NewTable(room);
    const int runs = RunCount(blockSlots);
    if (table) std::copy(table - runs, table + blockSlots, moved - runs);
    FreeTable();
    table = moved;
    tableCount->room = room;
}

template <class T>
void cow_ListStorage<T>::GrowTable(int slots) {
    if (slots > tableCount->room) MoveTable(RoomFor(slots));
    std::fill(table + blockSlots, table + slots, nullptr);
    std::fill(RunsEnd() - RunCount(slots), RunsEnd() - RunCount(blockSlots), nullptr);
    blockSlots = slots;
}

template <class T>
void cow_ListStorage<T>::ShrinkTable(int slots) noexcept {
    blockSlots = slots;
    if (RoomFor(slots) > tableCount->room / 4) return;
    try {
        MoveTable(RoomFor(slots));
    } catch (const std::bad_alloc&) {  // the table keeps its room
    }
}

template <class T>
void cow_ListStorage<T>::PutBlock(int index, Block* block) noexcept {
    table[index] = block;
    RunOf(index >> RunBlockShift()) = block && RunBlocks() == 1 ? block->Storage() : nullptr;
}

/// Notes the runs among the entries `first` to `last`.
template <class T>
void cow_ListStorage<T>::MarkRuns(int first, int last) noexcept {
    const std::ptrdiff_t blockSize = BlockSize();
    for (int run = RunCount(first); (run + 1) << RunBlockShift() <= last + 1; ++run) {
        Block* const* const blocks = table + (run << RunBlockShift());
        bool inRow = blocks[0] != nullptr;
        for (int i = 1; inRow && i < RunBlocks(); ++i) {
            inRow = blocks[i] == blocks[0] + i &&
                    blocks[i]->Storage() == blocks[0]->Storage() + i * blockSize;
        }
        RunOf(run) = inRow ? blocks[0]->Storage() : nullptr;
    }
}

template <class T>
void cow_ListStorage<T>::MarkAllRuns() noexcept {
    std::fill(RunsEnd() - RunCount(blockSlots), RunsEnd(), nullptr);
    MarkRuns(0, blockSlots - 1);
}

// From the last to the first: the copy is often given up soon after, from the first to the last,
// and then finds the headers in the cache.
template <class T>
void cow_ListStorage<T>::ShareBlocks() const noexcept {
    for (int first = (blockSlots - 1) & ~(slotGroup - 1); first >= 0; first -= slotGroup) {
        if (IsRunOfGroup(first)) {
            ShareRun(table[first], EachOfGroup());
        } else {
            for (int index = std::min(first + slotGroup, blockSlots); index-- > first;) {
                if (table[index]) table[index]->count.Increment();
            }
        }
    }
}

template <class T>
template <int... i>
void cow_ListStorage<T>::ShareRun(Block* headers, std::integer_sequence<int, i...>) noexcept {
    (headers[i].count.Increment(), ...);
}

template <class T>
template <int... i>
bool cow_ListStorage<T>::UnshareRun(Block* headers, std::integer_sequence<int, i...>) noexcept {
    bool someUnused = false;
    ((someUnused |= headers[i].count.Decrement() == 0), ...);
    return someUnused;
}

// Appending and removing in front (a queue) moves `start` up for ever. The pointers move down when
// the table would grow although more leading blocks are empty than are in use, with 16 left alone
// as the room that `Prefix` makes, and when a position would not fit in 32 bits.
template <class T>
bool cow_ListStorage<T>::MustSlide(std::int64_t n) const noexcept {
    const std::int64_t end = start + n;
    if (BlocksUpTo(end) > BlockLimit()) return true;
    if (SlotsUpTo(end) <= blockSlots) return false;
    const int leading = start >> blockShift;
    const std::int64_t used = BlocksUpTo(static_cast<std::int64_t>(start) + length) - leading;
    return leading > slotGroup + used;
}

template <class T>
void cow_ListStorage<T>::SlideDown() noexcept {
    const int leading = start >> blockShift;
    if (leading == 0) return;
    ReleaseBlocks(0, leading);
    std::copy(table + leading, table + blockSlots, table);
    std::fill(table + blockSlots - leading, table + blockSlots, nullptr);
    MarkAllRuns();
    start &= BlockSize() - 1;
}

template <class T>
void cow_ListStorage<T>::Reserve(std::int64_t n) {
    DetachTable();
    if (MustSlide(n)) SlideDown();
    const std::int64_t end = start + n;
    if (BlocksUpTo(end) > BlockLimit()) throw std::bad_alloc();
    const int slots = SlotsUpTo(end);
    if (slots > blockSlots) GrowTable(slots);
    ReleaseEmptyBlocks(BlocksUpTo(end));
    if (slots < blockSlots) ShrinkTable(slots);
}

// All free entries of the table move before the used ones.
template <class T>
void cow_ListStorage<T>::Prefix() {
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
    ReleaseEmptyBlocks(used);
    const int room = std::min(blockSlots, BlockLimit()) - used;
    if (room <= 0) throw std::bad_alloc();
    std::copy_backward(table, table + used, table + used + room);
    std::fill(table, table + room, nullptr);
    MarkAllRuns();
    start = room << blockShift;
}

// Blocks.

template <class T>
std::pair<int, int> cow_ListStorage<T>::LiveSlots(int index) const noexcept {
    const std::int64_t base = static_cast<std::int64_t>(index) << blockShift;
    const std::int64_t first = std::max<std::int64_t>(base, start);
    const std::int64_t end =
        std::min<std::int64_t>(base + BlockSize(), static_cast<std::int64_t>(start) + length);
    if (end <= first) return {0, 0};
    return {static_cast<int>(first - base), static_cast<int>(end - base)};
}

template <class T>
void cow_ListStorage<T>::ReleaseBlock(int index) noexcept {
    Block* const block = table[index];
    if (!block) return;
    PutBlock(index, nullptr);
    if (block->count.Decrement() == 0) FreeBlock(block, index);
}

template <class T>
void cow_ListStorage<T>::FreeBlock(Block* block, int index) noexcept {
    if constexpr (!std::is_trivially_destructible_v<T>) {
        const auto [first, end] = LiveSlots(index);
        for (int slot = end; slot > first;) std::destroy_at(block->Storage() + --slot);
    }
    Block::Free(block);
}

template <class T>
void cow_ListStorage<T>::ReleaseBlocks(int first, int last) noexcept {
    for (int index = first; index < last; ++index) ReleaseBlock(index);
}

// Blocks behind the last element are there for appending, or were left by a failure. Released
// backwards they go back to their group.
template <class T>
void cow_ListStorage<T>::ReleaseEmptyBlocks(std::int64_t first) noexcept {
    for (int index = blockSlots; index > first;) ReleaseBlock(--index);
}

// Short lists take blocks one by one. A longer one, which is likely to go on growing, takes groups
// of up to an eighth of the blocks that it has, which end where a run does.
template <class T>
cow_ListBlock<T>* cow_ListStorage<T>::MakeBlock(int index, int wanted) {
    const int elements = BlockSize();
    for (const int neighbour : {index - 1, index + 1}) {
        if (neighbour < 0 || neighbour >= blockSlots || !table[neighbour]) continue;
        if (Block* const block = table[neighbour]->TakeNext(elements)) return block;
    }
    const std::size_t blockBytes = sizeof(T) * static_cast<std::size_t>(elements);
    const int largest = static_cast<int>(largestGroupBytes / blockBytes);
    int size = std::min(largest, std::max(wanted, (length >> blockShift) / 8));
    if (size >= slotGroup) size -= (index + size) % slotGroup;
    return size > 1 ? Block::MakeGroup(elements, size) : Block::Make(elements);
}

// Puts a new block in entry `index`, one of `wanted` in a row, and in the entries behind it what
// its group still has; their storage is contiguous. Returns the last of them.
template <class T>
int cow_ListStorage<T>::AddBlocks(int index, int wanted) {
    const int first = index;
    Block* block = MakeBlock(index, wanted);
    PutBlock(index, block);
    while (index + 1 < blockSlots && !table[index + 1]) {
        block = block->TakeNext(BlockSize());
        if (!block) break;
        PutBlock(++index, block);
    }
    MarkRuns(first, index);
    return index;
}

template <class T>
void cow_ListStorage<T>::CopyBlock(int index, int keep) {
    const auto [first, end] = LiveSlots(index);
    const int count = std::max(0, std::min(end, keep) - first);
    Block* const fresh = Block::Make(BlockSize());
    try {
        std::uninitialized_copy_n(table[index]->Storage() + first, count, fresh->Storage() + first);
    } catch (...) {
        Block::Free(fresh);
        throw;
    }
    table[index]->count.Decrement();
    PutBlock(index, fresh);
    cow_RecordDetach(count);
}

template <class T>
void cow_ListStorage<T>::IsolateRange(std::int64_t first, std::int64_t last) {
    const int lastIndex = static_cast<int>((start + last) >> blockShift);
    for (int index = static_cast<int>((start + first) >> blockShift); index <= lastIndex; ++index) {
        if (!table[index]) {
            index = AddBlocks(index, lastIndex - index + 1);
        } else if (table[index]->count.References() != 1) {
            CopyBlock(index, BlockSize());
        }
    }
}

// Growing.

template <class T>
inline void cow_ListStorage<T>::Append(const T& x) {
    const cow_ListTableHead* const head = tableCount;
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
void cow_ListStorage<T>::AppendSlow(Passed x) {
    int index = IndexOf(length);
    if (tableCount->References() != 1 || (index | (slotGroup - 1)) + 1 != blockSlots ||
        index >= BlockLimit()) {
        Reserve(static_cast<std::int64_t>(length) + 1);
        index = IndexOf(length);
    }
    int last = index;
    if (!table[index]) {
        last = AddBlocks(index, 1);
    } else if (table[index]->count.References() != 1) {
        CopyBlock(index, BlockSize());
    }
    AddLast(x);
    AllowQuickAppend(last);
}

// The blocks from the last element's to block `last` are private and their storage is contiguous.
template <class T>
void cow_ListStorage<T>::AllowQuickAppend(int last) noexcept {
    const std::uintptr_t slot = reinterpret_cast<std::uintptr_t>(Slot(length - 1));
    tableCount->appendBase = slot - static_cast<std::size_t>(length - 1) * sizeof(T);
    tableCount->appendEnd = ((last + 1) << blockShift) - start;
}

template <class T>
template <class X>
void cow_ListStorage<T>::AddLast(X&& x) {
    std::construct_at(Slot(length), std::forward<X>(x));
    ++length;
}

template <class T>
template <class X>
void cow_ListStorage<T>::AddFirst(X&& x) {
    std::construct_at(Slot(-1), std::forward<X>(x));
    --start;
    ++length;
}

template <class T>
template <class FillSlots>
void cow_ListStorage<T>::AppendRun(int count, FillSlots&& fill) {
    if (count <= 0) return;
    const int oldLength = length;
    Reserve(static_cast<std::int64_t>(length) + count);
    IsolateRange(length, static_cast<std::int64_t>(length) + count - 1);
    try {
        for (int done = 0; done < count;) {
            const int n = std::min(BlockSize() - SlotOf(length), count - done);
            fill(Slot(length), done, n);
            length += n;
            done += n;
        }
    } catch (...) {
        while (length > oldLength) std::destroy_at(Slot(--length));
        throw;
    }
}

template <class T>
template <class FillSlots>
void cow_ListStorage<T>::Replace(int n, FillSlots&& fill) {
    if (n <= 0) return Clear();
    cow_ListStorage fresh;
    fresh.blockShift = blockShift;
    fresh.start = MustSlide(n) ? start & (BlockSize() - 1) : start;
    fresh.GrowTable(fresh.SlotsUpTo(static_cast<std::int64_t>(fresh.start) + n));
    fresh.AppendRun(n, fill);
    Swap(fresh);
}

// Shrinking.

template <class T>
void cow_ListStorage<T>::DropLast() noexcept {
    std::destroy_at(Slot(--length));
    if (SlotOf(length) == 0) ReleaseBlock(IndexOf(length));
}

// The block of the only element becomes empty too, wherever in the block it stood.
template <class T>
void cow_ListStorage<T>::DropFirst() noexcept {
    std::destroy_at(Slot(0));
    ++start;
    --length;
    if (length == 0 || SlotOf(0) == 0) ReleaseBlock(IndexOf(-1));
}

template <class T>
void cow_ListStorage<T>::Truncate(int n) {
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
            T* const slotsOfLast = table[last]->Storage();
            for (int slot = endLive; slot > keep;) std::destroy_at(slotsOfLast + --slot);
        }
    }
    ReleaseBlocks(last + 1, blockSlots);
    length = n;
    if (slots < blockSlots) ShrinkTable(slots);
}

template <class T>
void cow_ListStorage<T>::Clear() {
    if (tableCount->References() == 1) {
        FreeBlocks();
        tableCount->appendEnd = 0;
        tableCount->room = 0;
    } else {
        cow_ListTableHead* const fresh = new cow_ListTableHead;
        tableCount->Decrement();
        tableCount = fresh;
    }
    table = nullptr;
    length = 0;
    blockSlots = 0;
    blockShift = defaultShift;
    start = 0;
}
