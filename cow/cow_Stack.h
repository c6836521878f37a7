#pragma once

#include "cow/cow_List.h"

/// A stack of any copyable `T` on a copy-on-write list: a copy costs one increment. Taking from the
/// empty stack ends the process (`RaiseOutOfRange`).
template <class T>
class cow_Stack {
  public:
    [[nodiscard]] bool IsEmpty() const noexcept { return elements.IsEmpty(); }
    /// The element pushed last.
    [[nodiscard]] const T& Top() const noexcept { return elements.Last(); }

    /// Puts a copy of `x` on top.
    void Push(const T& x) { elements.Append(x); }
    /// Takes the element pushed last off and returns it.
    T Pop() { return elements.Pop(); }

  private:
    cow_List<T> elements;
};
