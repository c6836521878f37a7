#pragma once

#include "cow/KTSOvuGeomExport.h"

/// Raises the module's own count; the call that takes it from 0 to 1 raises `count` by one and
/// forces the processor level that the environment asks for (`KTSBasOmniSetSSELevel`).
KTSOVUGEOM_API void KTSOvuUtf_initialize(int& count);

/// Lowers the module's own count; the call that takes it from 1 to 0 lowers `count` by one.
KTSOVUGEOM_API void KTSOvuUtf_finalize(int& count);
