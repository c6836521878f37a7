#pragma once

#include <cstddef>

#include "foundation/alloc/mem_Alloc.h"

/// While it lives, the n-th request to the allocator (counted from 1 at construction) fails with
/// `std::bad_alloc`; the others succeed. One at a time.
class test_FailingAllocator {
  public:
    explicit test_FailingAllocator(int failingRequest) {
        countdown = failingRequest;
        before = mem_SetFailureHook(&Hook);
    }
    ~test_FailingAllocator() { mem_SetFailureHook(before); }
    test_FailingAllocator(const test_FailingAllocator&) = delete;
    test_FailingAllocator& operator=(const test_FailingAllocator&) = delete;

    /// True once the request came that was to fail.
    [[nodiscard]] static bool HasFailed() noexcept { return countdown <= 0; }

  private:
    static bool Hook(std::size_t) { return --countdown == 0; }
    static inline int countdown = 0;
    mem_FailureHook before;
};
