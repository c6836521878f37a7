#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_2DArray.h"
#include "foundation/shared/cls_FieldHandle.h"

class cls_ReadVisitor;
class cls_WriteVisitor;

/// Writes `array` as the object field `field` of the visited object: a record of the foundation's
/// class `cls_2D_ARRAY_CLASS`, without identity, with the number of rows, the number of columns and
/// the values row after row. An array with no rows or no columns is stored as 0 x 0.
KTSOVUGEOM_API void cow_Write2DArray(cls_WriteVisitor& visitor, const cls_FieldHandle& field,
                                     const cow_2DArray<double>& array);

/// Reads the array in the object field `field`, 0 x 0 for a null record. Numbers of rows and
/// columns that are negative, or whose product is not the number of values, give 0 x 0 and a line
/// on standard error.
[[nodiscard]] KTSOVUGEOM_API cow_2DArray<double> cow_Read2DArray(cls_ReadVisitor& visitor,
                                                                 const cls_FieldHandle& field);
