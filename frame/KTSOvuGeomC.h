#pragma once

#include "cow/KTSOvuGeomExport.h"

/* The undecorated entry points, for programs that load the library at run time; plain C. */

#ifdef __cplusplus
extern "C" {
#endif

/// Adds one use of the library on the count of the plain entry points. While the library is up this
/// only counts and returns the new number of users (2 after one load, which holds a use itself);
/// else it brings everything up and returns the new library-specific count, 1 on a clean first
/// start. An exception of the start-up propagates and leaves nothing done.
///
/// Kept: the first start returns another count than the later calls, and it is 2 instead of 1 when
/// a client holds a library-specific use. One would expect the number of users each time; programs
/// that load the library only test the answer for 0.
KTSOVUGEOM_API unsigned KTSOvuGeom_initializeC(void);

/// Takes one use of `KTSOvuGeom_initializeC` away; the last use of all brings everything down.
KTSOVUGEOM_API void KTSOvuGeom_finalizeC(void);

#ifdef __cplusplus
}
#endif
