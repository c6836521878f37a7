#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "frame/KTSOvuGeomC.h"

/// Start-up and shut-down of the library. The loader holds one use from the moment the library is
/// loaded, so that a client's matched pair of calls only counts. The counts are plain and belong to
/// one thread at a time.
///
/// Kept: nothing guards against a finalise too many. It tears the library down while the loader's
/// use still stands; two too many wrap the count, and the next initialise then brings nothing up.
/// One would expect a refusal; hosts rely on the plain counting of every pair of the application.

/// Adds one use. The first brings up the foundation and then every module: it raises `userCount` by
/// one for itself, by one for each library and module that was not up yet, and by one when it is
/// the first library-specific use. Later calls change no more than the count of uses. When a step
/// throws, the steps before it are undone, all counts are as before, and the exception propagates.
KTSOVUGEOM_API void KTSOvuGeom_initialize(int& userCount);

/// Takes one use away. The last brings everything down in the exact reverse order and lowers
/// `userCount` by what a first `KTSOvuGeom_initialize` raises it.
KTSOVUGEOM_API void KTSOvuGeom_finalize(int& userCount);

/// Adds one library-specific use; the first raises `userCount` by one. No module is touched.
KTSOVUGEOM_API void KTSOvuGeom_specific_initialize(int& userCount);

/// Takes one library-specific use away; the last lowers `userCount` by one. No module is touched.
KTSOVUGEOM_API void KTSOvuGeom_specific_finalize(int& userCount);
