#include "foundation/alloc/KTSBasAlloc.h"

#include "foundation/alloc/KTSBasUseCount.h"
#include "foundation/alloc/detail/mem_TinyCells.h"

namespace {
constinit KTSBasUseCount uses;
}

void KTSBasAlloc_initialize(int& count) { uses.Raise(count); }

void KTSBasAlloc_finalize(int& count) {
    if (uses.Lower(count)) mem_detail::ReleaseUnusedChunks();
}
