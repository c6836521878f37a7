#pragma once

#include "cow/KTSOvuGeomExport.h"

/* Array routines for flat numeric code. Every argument is a pointer, scalars and counts included,
   so that C and Fortran (bind(C)) call them alike; arrays are column-major: element (i, j) of an
   array with m rows stands at (i - 1) + m * (j - 1). A negative count is taken as zero. */

#ifdef __cplusplus
extern "C" {
#endif

/** Copies `n` doubles; the ranges may overlap. */
KTSOVUGEOM_API void utf_copy(const double* source, double* target, const int* n);

/** Sets `n` doubles to `value`. */
KTSOVUGEOM_API void utf_aset(double* a, const double* value, const int* n);

/** C (l x n) = A (l x m) * B (m x n); C is zeroed first and overlaps neither factor. Sums run over
    ascending inner index. */
KTSOVUGEOM_API void utf_aprd(const double* a, const double* b, double* c, const int* l,
                             const int* m, const int* n);

/** B (n x m) = the transpose of A (m x n); B does not overlap A. */
KTSOVUGEOM_API void utf_atra(const double* a, double* b, const int* m, const int* n);

/** c = a x b for 3-vectors; c may be a or b. */
KTSOVUGEOM_API void utf_axprd(const double* a, const double* b, double* c);

/** Sorts the first `n` (at most 3) of `values` into descending order, and the columns of the 3 x 3
    array `directions` with them. Equal values keep their order; a NaN stays where it is. */
KTSOVUGEOM_API void utf_asortd(double* values, double* directions, const int* n);

/** Principal values and directions of a symmetric tensor.

    `tensor` holds `ndi` direct components (11, 22, 33) followed by `nshr` shear components (12, 13,
    23); what is missing is 0, and counts are limited to 0..3. `values` receives three principal
    values, unsorted; row k of the 3 x 3 array `directions` receives the unit direction of value k,
    the rows being orthonormal. A component that is not finite gives NaN values and the coordinate
    axes. `selector` (1 or 2) is taken for the callers' sake and has no effect.

    Method: cyclic Jacobi rotations (Golub and Van Loan, Matrix Computations, 8.5) on the tensor
    scaled by a power of two, at most 32 sweeps; accurate to the rounding of the largest component,
    for repeated and nearly equal values too. */
KTSOVUGEOM_API void utf_sprind(const double* tensor, double* values, double* directions,
                               const int* selector, const int* ndi, const int* nshr);

#ifdef __cplusplus
}
#endif
