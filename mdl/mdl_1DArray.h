#pragma once

#include "cow/cow_List.h"

/// A one-dimensional array as the value of an attribute: a `cow_List` that archives keep as an
/// array. Copies share the elements; `Get` and `Append` detach.
template <class T>
class mdl_1DArray {
  public:
    /// The empty array.
    mdl_1DArray() = default;
    /// Shares the elements of `list`.
    explicit mdl_1DArray(const cow_List<T>& list) noexcept : elements(list) {}

    [[nodiscard]] int Length() const noexcept { return elements.Length(); }
    /// The element at `index`, for reading or for writing; an index out of range ends the process.
    [[nodiscard]] const T& ConstGet(int index) const noexcept { return elements.ConstGet(index); }
    [[nodiscard]] T& Get(int index) { return elements.Get(index); }
    void Append(const T& element) { elements.Append(element); }
    /// The elements; a copy shares them.
    [[nodiscard]] const cow_List<T>& List() const noexcept { return elements; }

    friend bool operator==(const mdl_1DArray& a, const mdl_1DArray& b) {
        return a.elements == b.elements;
    }

  private:
    cow_List<T> elements;
};
