#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>

#include "cow/cow_ListStorage.h"
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
/// `RemoveIndex` may have moved some elements already when `T` cannot be moved without throwing
/// (one is then there twice, none is lost or half made). Counters are plain integers: lists that
/// share storage belong to one thread at a time.
template <class T>
class cow_List {
  public:
    class const_iterator;
    using value_type = T;
    using iterator = const_iterator;

    /// The empty list.
    cow_List() = default;
    /// One to five elements. `cow_List<int>(5)` is the list of the one element 5.
    explicit cow_List(const T& a) : storage(1) { AppendAll(a); }
    cow_List(const T& a, const T& b) : storage(2) { AppendAll(a, b); }
    cow_List(const T& a, const T& b, const T& c) : storage(3) { AppendAll(a, b, c); }
    cow_List(const T& a, const T& b, const T& c, const T& d) : storage(4) { AppendAll(a, b, c, d); }
    cow_List(const T& a, const T& b, const T& c, const T& d, const T& e) : storage(5) {
        AppendAll(a, b, c, d, e);
    }
    /// Copies of `count` elements of the array. A `sizeHint` of 0 means that `count` is the hint; a
    /// negative one is none.
    cow_List(const T* elements, int count, int sizeHint = 0)
        : storage(sizeHint == 0 ? count : sizeHint) {
        SetFromArray(elements, count);
    }
    /// `count` copies of `value`; the hint is `count`.
    cow_List(cow_ListFill, int count, const T& value) : storage(count) { Fill(count, value); }
    /// Shares the storage of `other`.
    cow_List(const cow_List& other) noexcept = default;
    cow_List& operator=(const cow_List& other) noexcept = default;
    ~cow_List() = default;

    /// The empty list with blocks for `sizeHint` elements; 0 or less is no hint.
    ///
    /// Kept: the first write cuts the block table to what the length asks for and `Clear` goes back
    /// to blocks of 16, where one would have expected the room to stay; of a hint only the block
    /// size lasts, which is what callers give it for.
    [[nodiscard]] static cow_List WithSizeHint(int sizeHint) {
        return cow_List(SizeHint{sizeHint});
    }

    [[nodiscard]] int Length() const noexcept { return storage.Length(); }
    [[nodiscard]] bool IsEmpty() const noexcept { return Length() == 0; }
    /// Returns `i` when it is the index of an element, else ends the process.
    int CheckIndex(int i) const noexcept;
    /// The element at `i`, checked; never detaches.
    [[nodiscard]] const T& operator[](int i) const noexcept { return storage.At(CheckIndex(i)); }
    [[nodiscard]] const T& ConstGet(int i) const noexcept { return storage.At(CheckIndex(i)); }
    /// The element at `i` for writing, checked; makes the table and the block that holds it
    /// private.
    [[nodiscard]] T& Get(int i) { return UncheckedGet(CheckIndex(i)); }
    /// As `ConstGet` and `Get` without the check. REQUIRES: 0 <= `i` < `Length()`.
    [[nodiscard]] const T& UncheckedConstGet(int i) const noexcept { return storage.At(i); }
    [[nodiscard]] T& UncheckedGet(int i) { return storage.Writable(i); }
    /// The first and the last element, checked.
    [[nodiscard]] const T& First() const noexcept { return ConstGet(0); }
    [[nodiscard]] const T& Last() const noexcept { return ConstGet(Length() - 1); }

    /// Adds a copy of `x` at the end; `x` may be an element of the list.
    void Append(const T& x) { storage.Append(x); }
    /// Adds a copy of `x` in front; `x` may be an element of the list.
    void Prepend(const T& x);
    /// Inserts a copy of `x` before element `i`, 0 <= `i` <= `Length()`.
    void InsertIndex(int i, const T& x);
    void RemoveIndex(int i);
    void RemoveFirst() { RemoveIndex(0); }
    void RemoveLast() { RemoveIndex(Length() - 1); }
    /// Removes the last element and returns a copy of it.
    T Pop();
    /// Removes all elements; the list then has blocks of 16 whatever its hint was.
    void Clear() { storage.Clear(); }
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
        storage.Replace(n, construct);
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
    [[nodiscard]] const_iterator begin() const noexcept { return const_iterator(storage, 0); }
    [[nodiscard]] const_iterator end() const noexcept { return const_iterator(storage, Length()); }

    [[nodiscard]] cow_ListLayout Layout() const noexcept { return storage.Layout(); }

    friend bool operator==(const cow_List& a, const cow_List& b) { return a.IsEqual(b); }
    friend bool operator!=(const cow_List& a, const cow_List& b) { return !a.IsEqual(b); }

  private:
    template <class>
    friend class cow_ListIter;
    using Storage = cow_ListStorage<T>;
    struct SizeHint {
        int elements;
    };

    explicit cow_List(SizeHint hint) : storage(hint.elements) {}
    template <class... Elements>
    void AppendAll(const Elements&... elements) {
        (Append(elements), ...);
    }
    void InsertTail(int i, T& x);
    void InsertHead(int i, T& x);

    /// An element to move from where `T` moves without throwing, else to copy from.
    using Transferred = std::conditional_t<std::is_nothrow_move_constructible_v<T> &&
                                               std::is_nothrow_move_assignable_v<T>,
                                           T&&, const T&>;
    static Transferred Transfer(T& element) noexcept { return static_cast<Transferred>(element); }

    Storage storage;
};

/// Walks a list forwards by a pointer into the elements that lie side by side.
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
        if (++current == spanEnd) EnterSpan(next);
        return *this;
    }
    const_iterator operator++(int) noexcept {
        const_iterator before = *this;
        ++*this;
        return before;
    }
    /// Iterators of one list are equal when they stand at the same element.
    friend bool operator==(const const_iterator& a, const const_iterator& b) noexcept {
        return a.current == b.current;
    }

  private:
    friend class cow_List;
    const_iterator(const Storage& walked, int first) noexcept : storage(&walked) {
        EnterSpan(first);
    }
    /// Past the last element there is no span, and `current` is null.
    void EnterSpan(int first) noexcept {
        std::span<const T> span;
        if (first < storage->Length()) span = storage->SpanFrom(first);
        current = span.data();
        spanEnd = current + span.size();
        next = first + static_cast<int>(span.size());
    }

    const Storage* storage = nullptr;
    const T* current = nullptr;
    const T* spanEnd = nullptr;
    int next = 0;  ///< index of the element at `spanEnd`
};

template <class T>
inline int cow_List<T>::CheckIndex(int i) const noexcept {
    if (static_cast<unsigned>(i) >= static_cast<unsigned>(Length())) RaiseOutOfRange(i);
    return i;
}

template <class T>
template <class Use>
void cow_List<T>::ForEachSpan(Use&& use) const {
    const int n = Length();
    int walked = 0;
    for (std::span<const T> span; walked < n; use(span)) {
        span = {};
        do {
            const std::span<const T> next = storage.SpanFrom(walked);
            if (!span.empty() && next.data() != span.data() + span.size()) break;
            span = span.empty() ? next : std::span(span.data(), span.size() + next.size());
            walked += static_cast<int>(next.size());
        } while (walked < n);
    }
}

// Adding and removing.

template <class T>
void cow_List<T>::Resize(int n) {
    if (n <= 0) {
        storage.Clear();
    } else if (n < Length()) {
        storage.Truncate(n);
    } else {
        storage.Reserve(n);
    }
}

template <class T>
void cow_List<T>::Prepend(const T& x) {
    storage.Prefix();
    storage.IsolateRange(-1, -1);
    storage.AddFirst(x);
}

template <class T>
void cow_List<T>::InsertIndex(int i, const T& x) {
    if (i == Length()) return Append(x);
    if (i == 0) return Prepend(x);
    CheckIndex(i);
    T copy(x);
    if (i >= Length() - i) {
        InsertTail(i, copy);
    } else {
        InsertHead(i, copy);
    }
}

template <class T>
void cow_List<T>::InsertTail(int i, T& x) {
    const int end = Length();
    storage.Reserve(static_cast<std::int64_t>(end) + 1);
    storage.IsolateRange(i, end);
    storage.AddLast(Transfer(storage.At(end - 1)));
    for (int k = end - 1; k > i; --k) storage.At(k) = Transfer(storage.At(k - 1));
    storage.At(i) = Transfer(x);
}

template <class T>
void cow_List<T>::InsertHead(int i, T& x) {
    storage.Prefix();
    storage.IsolateRange(-1, i);
    storage.AddFirst(Transfer(storage.At(0)));
    for (int k = 1; k < i; ++k) storage.At(k) = Transfer(storage.At(k + 1));
    storage.At(i) = Transfer(x);
}

template <class T>
void cow_List<T>::RemoveIndex(int i) {
    CheckIndex(i);
    const int last = Length() - 1;
    storage.DetachTable();
    if (i > last - i) {
        storage.IsolateRange(i, last);
        for (int k = i; k < last; ++k) storage.At(k) = Transfer(storage.At(k + 1));
        storage.DropLast();
    } else {
        storage.IsolateRange(0, i);
        for (int k = i; k > 0; --k) storage.At(k) = Transfer(storage.At(k - 1));
        storage.DropFirst();
    }
}

template <class T>
T cow_List<T>::Pop() {
    T last(Last());
    RemoveLast();
    return last;
}

template <class T>
void cow_List<T>::Fill(int n, const T& x) {
    storage.Replace(n,
                    [&x](T* slots, int, int count) { std::uninitialized_fill_n(slots, count, x); });
}

template <class T>
void cow_List<T>::SetFromArray(const T* elements, int n) {
    storage.Replace(n, [elements](T* slots, int first, int count) {
        std::uninitialized_copy_n(elements + first, count, slots);
    });
}

template <class T>
void cow_List<T>::Concatenate(const cow_List& other) {
    storage.AppendRun(other.Length(), [&other](T* slots, int first, int count) {
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

// Searching and deriving.

template <class T>
cow_List<T> cow_List<T>::Slice(int first, int last) const {
    const int from = std::max(first, 0);
    const int hi = std::min(std::max(last, from), Length());
    const int lo = std::min(from, hi);
    cow_List slice(SizeHint{hi - lo});
    for (int i = lo; i < hi; ++i) slice.Append(UncheckedConstGet(i));
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
    if (Length() != other.Length()) return false;
    if constexpr (cow_HasReflexiveEquality<T>) {
        if (storage.Shares(other.storage)) return true;
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
    if (IsEmpty()) return nullptr;
    struct FreeStorage {
        void operator()(T* first) const noexcept { mem_Free(first); }
    };
    std::unique_ptr<T, FreeStorage> array(
        static_cast<T*>(mem_Malloc(static_cast<std::size_t>(Length()) * sizeof(T))));
    std::uninitialized_copy(begin(), end(), array.get());
    n = Length();
    return array.release();
}
