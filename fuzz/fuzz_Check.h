#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "foundation/alloc/mem_Alloc.h"

#if defined(KTSOVU_MEASURE_MEMORY)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

/// Ends the process with `what` unless `holds`.
inline void fuzz_Check(bool holds, const char* what) {
    if (holds) return;
    std::printf("fuzz check failed: %s\n", what);
    std::fflush(stdout);
    std::abort();
}

/// While it lives, checks at every request to the allocator that all memory claimed since its
/// construction stays within 16 times the input and one MiB. Measures in fuzzing builds alone.
class fuzz_MemoryBound {
  public:
    explicit fuzz_MemoryBound(std::size_t inputSize) {
        limit = Allocated() + 16 * inputSize + (std::size_t{1} << 20);
        before = mem_SetFailureHook(&Hook);
    }
    ~fuzz_MemoryBound() { mem_SetFailureHook(before); }
    fuzz_MemoryBound(const fuzz_MemoryBound&) = delete;
    fuzz_MemoryBound& operator=(const fuzz_MemoryBound&) = delete;

  private:
    static std::size_t Allocated() {
#if defined(KTSOVU_MEASURE_MEMORY)
        return __sanitizer_get_current_allocated_bytes();
#else
        return 0;
#endif
    }
    static bool Hook(std::size_t bytes) {
        fuzz_Check(Allocated() + bytes <= limit || bytes == 0, "memory within 16 x input + 1 MiB");
        return false;
    }

    static inline std::size_t limit = 0;
    mem_FailureHook before;
};
