#pragma once

#include "foundation/coreutils/KTSBasCoreUtilsExport.h"

/// Raises the library's own count; the call that takes it from 0 to 1 raises `count` by one.
KTSBASCOREUTILS_API void KTSBasCoreUtils_initialize(int& count);

/// Lowers the library's own count; the call that takes it from 1 to 0 lowers `count` by one and
/// forgets the archive components and the message catalogue. Singletons that are still registered
/// belong to their libraries and stay.
KTSBASCOREUTILS_API void KTSBasCoreUtils_finalize(int& count);
