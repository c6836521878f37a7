#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/typ_ArchCompTable.h"

/// Raises the module's own count; the call that takes it from 0 to 1 raises `count` by one, inserts
/// archive component 778, creates the tolerances (`gsl_Util`) and registers the metadata of the
/// module's classes. When that throws, everything is undone.
KTSOVUGEOM_API void KTSOvuGsl_initialize(int& count);

/// Lowers the module's own count; the call that takes it from 1 to 0 lowers `count` by one,
/// withdraws what the module registered and deletes the tolerances.
KTSOVUGEOM_API void KTSOvuGsl_finalize(int& count);

/// The class table of archive component 778.
[[nodiscard]] KTSOVUGEOM_API typ_ArchCompEntry gsl_ArchEntry();
