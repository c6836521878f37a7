#pragma once

#include "foundation/basicutils/KTSOvuBasicUtilsExport.h"

/// Raises the library's own count; the call that takes it from 0 to 1 raises `count` by one.
KTSOVUBASICUTILS_API void KTSOvuBasicUtils_initialize(int& count);

/// Lowers the library's own count; the call that takes it from 1 to 0 lowers `count` by one.
KTSOVUBASICUTILS_API void KTSOvuBasicUtils_finalize(int& count);
