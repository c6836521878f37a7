#pragma once

#include "cow/KTSOvuGeomExport.h"

/// Raises the module's own count; the call that takes it from 0 to 1 raises `count` by one.
KTSOVUGEOM_API void KTSOvuWip_initialize(int& count);

/// Lowers the module's own count; the call that takes it from 1 to 0 lowers `count` by one and
/// destroys the reporting object (`wip_WIP`).
KTSOVUGEOM_API void KTSOvuWip_finalize(int& count);
