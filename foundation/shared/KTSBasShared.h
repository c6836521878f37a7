#pragma once

#include "foundation/shared/KTSBasSharedExport.h"

/// Raises the library's own count; the call that takes it from 0 to 1 raises `count` by one and
/// records the foundation's archive components. When that throws, everything is undone.
KTSBASSHARED_API void KTSBasShared_initialize(int& count);

/// Lowers the library's own count; the call that takes it from 1 to 0 lowers `count` by one,
/// withdraws those components and deletes the metadata registrar.
KTSBASSHARED_API void KTSBasShared_finalize(int& count);
