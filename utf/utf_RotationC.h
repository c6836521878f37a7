#pragma once

#include "cow/KTSOvuGeomExport.h"

/* Flat rotation routines. Every argument is a pointer, scalars included; 3 x 3 arrays are nine
   doubles in column-major order, element (i, j) at (i - 1) + 3 * (j - 1). A 3-D quaternion is
   (x, y, z, w), vector part first, identity (0, 0, 0, 1); a rotation by angle t about the unit axis
   n is (n sin(t/2), cos(t/2)). A rotation matrix has the local axes as its columns. Angles are in
   radians. Nothing here throws; input that is not finite gives output that is not finite. */

#ifdef __cplusplus
extern "C" {
#endif

/** Rotation matrix `r` (9) of the quaternion `q` (4) as given, never normalised. `flag` becomes 1
    when the norm of q differs from 1 by more than 0.01, else 0.

    Kept: the diagonal has the two-square form 2 (x x + w w) - 1, so that a quaternion not of unit
    length gives another diagonal than the direction cosines of `utf_Quat3dBase` (four squares,
    whose transpose `r` is otherwise). Numeric code relies on each form. */
KTSOVUGEOM_API void ktsovuutf_quat2rot3d(const double* q, double* r, int* flag);

/** Rotation matrix `r` (9) of the rotation vector `v` (3: axis times angle) by Rodrigues' formula
    for the unnormalised vector. The identity when the angle |v| is not above `tol`; a `tol` below 0
    leaves a null vector to the formula, which gives NaN. */
KTSOVUGEOM_API void ktsovu_rotmatfromrotvect(double* r, const double* v, const double* tol);

/** Quaternion `q` of the rotation matrix `r` (Shepperd's choice of the largest of the trace and the
    three diagonal entries; the trace wins every tie, else the higher index). The sign is as it
   comes: the component of the largest pivot is positive. `scalarFirst` 0: q = (x, y, z, w); else
    (w, x, y, z). A matrix that is far from a rotation is reported by "SYSTEM ERROR 1 IN CALQUAT" or
    "SYSTEM ERROR 3 IN CALQUAT" on standard output, and q is what the square root gives. */
KTSOVUGEOM_API void utf_calquat(double* q, const double* r, const int* scalarFirst);

/** `utf_calquat` (vector part first) after the repair of a left-handed matrix: when
    (column 1 x column 2) . column 3 is negative, the caller's column 2 of `r` is negated. */
KTSOVUGEOM_API void utf_getquat(double* q, double* r);

/** Rotates the symmetric tensor `t` (6: 11, 22, 33, 12, 13, 23) into `out` (9: the full tensor).
    `n` 6: q has four values; any other: two values (a 2-D quaternion).

    Kept: unlike everything else here, q[0] is read as the scalar, and a 2-D quaternion (s, c) goes
    into the last two places behind a zero scalar. The stored identity (0, 0, 0, 1) therefore turns
    the tensor by a half-turn about axis 3 (13 and 23 change sign), and a 2-D quaternion mixes axes
    2 and 3. One would expect the layout of the other routines; callers hand in arrays made for
    this one. */
KTSOVUGEOM_API void utf_quatrot(const double* t, const double* q, double* out, const int* n);

/** Principal values and orientation of the tensor `t`: out[0..2] the principal values, out[3..6]
    the quaternion (x, y, z, w) of the principal directions. `ndi` direct and `nshr` shear
    components follow one another in t; values and directions are sorted in descending order over
    the first `ndi` when there are two or more, so that two keep the 3-axis third. A
    left-handed set gets its second direction negated. Element codes (`code`, divided by 1000 when
    above 1000) 21 to 25 and 88 to 91 select 2 in `utf_sprind`, others 1.

    With `ncomp` 9, `ndi` 1 and `nshr` 1 the caller's tensor (11, 12) becomes (11, 0, 12) in place
   and `ndi` becomes 2. When `ncomp` is not 7, 8 or 9 the quaternion is put into the 2-D layout:
    out[3..4] = (z, w), out[5..6] = 0. */
KTSOVUGEOM_API void utf_calprinquat(double* t, double* out, const int* code, const int* ncomp,
                                    int* ndi, const int* nshr);

#ifdef __cplusplus
}
#endif
