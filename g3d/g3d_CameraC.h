#pragma once

#include <stdbool.h>

#include "cow/KTSOvuGeomExport.h"

#ifdef __cplusplus
extern "C" {
#endif

/// Chooses what the camera's rotations turn about: with true (the state at load) the target, with
/// false a point halfway between the clipping planes, onto which the target is moved first. One
/// switch for the whole process, not locked.
///
/// Kept: the switch is stored negated; it is "off" at load, as after a call with true, and a call
/// with false turns the re-centring on. One would expect a "set" with false to switch something
/// off; the viewer passes the state of its menu entry "rotate about the target" as it is.
KTSOVUGEOM_API void g3d_Camera_SetTargetRotate(bool aboutTarget);

#ifdef __cplusplus
}
#endif
