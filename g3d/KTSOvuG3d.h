#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/typ_ArchCompTable.h"

/// Raises the module's own count; the call that takes it from 0 to 1 raises `count` by one, inserts
/// archive component 36, registers the metadata of the module's classes and creates `g3d_ColorMap`.
/// When that throws, everything is undone.
KTSOVUGEOM_API void KTSOvuG3d_initialize(int& count);

/// Lowers the module's own count; the call that takes it from 1 to 0 lowers `count` by one,
/// withdraws what the module registered and deletes `g3d_ColorMap`.
KTSOVUGEOM_API void KTSOvuG3d_finalize(int& count);

/// The class table of archive component 36.
[[nodiscard]] KTSOVUGEOM_API typ_ArchCompEntry g3d_ArchEntry();
