#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/alloc/mem_Alloc.h"

/// The bare reference counter of the copy-on-write family: a signed 32-bit number, 1 when made.
///
/// Not atomic and not locked: all handles of one counter belong to one thread at a time. On the
/// heap it takes a header-free cell of the allocator.
class cow_Counter {
  public:
    cow_Counter() noexcept = default;
    cow_Counter(const cow_Counter&) = delete;
    cow_Counter& operator=(const cow_Counter&) = delete;

    [[nodiscard]] std::int32_t References() const noexcept { return references; }

    void Increment() noexcept { ++references; }
    /// Takes one reference away and returns what is left.
    std::int32_t Decrement() noexcept { return --references; }

    static void* operator new(std::size_t bytes) { return mem_OperatorNewTinyThrow(bytes); }
    static void operator delete(void* counter, std::size_t bytes) noexcept {
        mem_OperatorDeleteTiny(counter, bytes);
    }

  private:
    std::int32_t references = 1;
};
