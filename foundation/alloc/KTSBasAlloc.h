#pragma once

#include "foundation/alloc/KTSBasAllocExport.h"

/// Raises the library's own count; the call that takes it from 0 to 1 raises `count` by one.
KTSBASALLOC_API void KTSBasAlloc_initialize(int& count);

/// Lowers the library's own count; the call that takes it from 1 to 0 lowers `count` by one and
/// gives the cells of tiny blocks back to the system when none is in use.
KTSBASALLOC_API void KTSBasAlloc_finalize(int& count);
