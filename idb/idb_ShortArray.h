#pragma once

#include <cstddef>
#include <vector>

#include "foundation/coreutils/omi_Allocator.h"

/// An array that is sized once: up to `room` elements lie in the object itself, so that records of
/// usual size claim no memory for their fields.
template <class T, std::size_t room>
class idb_ShortArray {
  public:
    /// Gives the array, which is empty, `n` value-initialised elements.
    void SetSize(std::size_t n) {
        if (n > room) more.resize(n);
        count = n;
    }

    [[nodiscard]] bool IsEmpty() const noexcept { return count == 0; }
    [[nodiscard]] std::size_t Size() const noexcept { return count; }
    [[nodiscard]] T* Data() noexcept { return count > room ? more.data() : few; }
    [[nodiscard]] const T* Data() const noexcept { return count > room ? more.data() : few; }
    [[nodiscard]] T& operator[](std::size_t i) noexcept { return Data()[i]; }
    [[nodiscard]] const T& operator[](std::size_t i) const noexcept { return Data()[i]; }
    [[nodiscard]] T* begin() noexcept { return Data(); }
    [[nodiscard]] T* end() noexcept { return Data() + count; }
    [[nodiscard]] const T* begin() const noexcept { return Data(); }
    [[nodiscard]] const T* end() const noexcept { return Data() + count; }

  private:
    std::size_t count = 0;
    T few[room]{};
    std::vector<T, omi_Allocator<T>> more;
};
