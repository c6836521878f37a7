#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

#include "cow/cow_COW.h"
#include "cow/cow_RaiseOutOfRange.h"
#include "cow/cow_TinyAllocated.h"
#include "foundation/alloc/mem_Alloc.h"

/// A table of rows x columns elements of any copyable `T`, row by row in one piece of storage,
/// copied on write.
///
/// A copy costs one increment; the first `Get` of a shared array copies all elements. A moved-from
/// array is empty (0 x 0). References are valid until the array, or a copy that shares the storage,
/// is written or destroyed. An index out of range ends the process (`RaiseOutOfRange`). Arrays that
/// share storage belong to one thread at a time.
template <class T>
class cow_2DArray {
  public:
    /// The empty array, 0 x 0.
    cow_2DArray() : cow_2DArray(0, 0) {}
    /// Default values in `rows` x `columns` places. Negative dimensions end the process.
    cow_2DArray(int rows, int columns);
    cow_2DArray(const cow_2DArray&) noexcept = default;
    cow_2DArray(cow_2DArray&& other) : cow_2DArray() { Swap(other); }
    ~cow_2DArray() = default;

    [[nodiscard]] int Rows() const noexcept { return rows; }
    [[nodiscard]] int Cols() const noexcept { return columns; }
    /// The element at (r, c); never detaches.
    [[nodiscard]] const T& ConstGet(int r, int c) const noexcept {
        return storage.ConstGet()->elements[Index(r, c)];
    }
    /// The element at (r, c) for writing; makes the storage private.
    [[nodiscard]] T& Get(int r, int c) {
        const std::size_t index = Index(r, c);
        return storage.Get()->elements[index];
    }

    void Swap(cow_2DArray& other) noexcept {
        std::swap(rows, other.rows);
        std::swap(columns, other.columns);
        storage.Swap(other.storage);
    }
    cow_2DArray& operator=(const cow_2DArray&) noexcept = default;
    cow_2DArray& operator=(cow_2DArray&& other) {
        cow_2DArray taken(std::move(other));
        Swap(taken);
        return *this;
    }

  private:
    /// The elements of one or more arrays.
    struct Storage : cow_TinyAllocated<Storage> {
        explicit Storage(std::size_t n) : elements(Allocate(n)), size(n) {
            std::uninitialized_value_construct_n(elements.get(), n);
            elements.get_deleter().size = n;
        }
        Storage(const Storage& other)
            : cow_TinyAllocated<Storage>(), elements(Allocate(other.size)), size(other.size) {
            std::uninitialized_copy_n(other.elements.get(), size, elements.get());
            elements.get_deleter().size = size;
        }
        Storage& operator=(const Storage&) = delete;
        ~Storage() = default;

        struct Destroy {
            std::size_t size = 0;  ///< elements constructed
            void operator()(T* first) const noexcept {
                std::destroy_n(first, size);
                mem_Free(first);
            }
        };
        static T* Allocate(std::size_t n) {
            static_assert(alignof(T) <= alignof(std::max_align_t));
            if (n > SIZE_MAX / sizeof(T)) throw std::bad_alloc();
            return static_cast<T*>(mem_Malloc(n * sizeof(T)));
        }

        std::unique_ptr<T[], Destroy> elements;
        std::size_t size;
    };

    [[nodiscard]] std::size_t Index(int r, int c) const noexcept {
        if (static_cast<unsigned>(r) >= static_cast<unsigned>(rows)) RaiseOutOfRange(r);
        if (static_cast<unsigned>(c) >= static_cast<unsigned>(columns)) RaiseOutOfRange(c);
        return static_cast<std::size_t>(r) * static_cast<std::size_t>(columns) +
               static_cast<std::size_t>(c);
    }
    static int CheckDimension(int n) noexcept {
        if (n < 0) RaiseOutOfRange(n);
        return n;
    }

    int rows;
    int columns;
    cow_COW<Storage, cow_Direct<Storage>> storage;
};

template <class T>
cow_2DArray<T>::cow_2DArray(int rowCount, int columnCount)
    : rows(CheckDimension(rowCount)),
      columns(CheckDimension(columnCount)),
      storage(new Storage(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns))) {}
