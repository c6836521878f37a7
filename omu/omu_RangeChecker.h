#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/cow_String.h"

/// Tests whether the value of an argument lies in its range; one outside raises
/// `omu_RangeErrorException` with the name of the argument. Limits are included or excluded. NaN
/// lies in no range.
///
/// Kept: the one-sided checks are `CheckInRange` with the extreme `int` of the other side,
/// excluded: `CheckGreaterThan("n", 0, true, 2147483647)` raises "n must be >= 0", and so does a
/// double beyond it; one would have expected those values to pass. Commands that were written for
/// it take the largest integers as unset. A double without an upper or lower limit is checked by
/// `CheckInRange` with an infinite one.
class KTSOVUGEOM_API omu_RangeChecker {
  public:
    static void CheckInRange(const cow_String& name, int lower, bool lowerIncluded, int value,
                             int upper, bool upperIncluded);
    static void CheckInRange(const cow_String& name, double lower, bool lowerIncluded, double value,
                             double upper, bool upperIncluded);

    static void CheckGreaterThan(const cow_String& name, int lower, bool lowerIncluded, int value);
    static void CheckGreaterThan(const cow_String& name, double lower, bool lowerIncluded,
                                 double value);

    static void CheckLessThan(const cow_String& name, int upper, bool upperIncluded, int value);
    static void CheckLessThan(const cow_String& name, double upper, bool upperIncluded,
                              double value);
};
