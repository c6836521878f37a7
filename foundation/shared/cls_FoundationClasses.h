#pragma once

#include <cstdint>

#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/cls_FieldHandle.h"

/// The two-dimensional array of doubles, known to every registrar from the start: the number of
/// rows and of columns (int) and all values row after row (a list of doubles). Who holds an array
/// reads and writes it by these fields.
inline constexpr std::uint32_t cls_2D_ARRAY_CLASS = typ_TypeId(35, 1);
inline constexpr cls_FieldHandle cls_2D_ARRAY_ROWS = "rows";
inline constexpr cls_FieldHandle cls_2D_ARRAY_COLUMNS = "columns";
inline constexpr cls_FieldHandle cls_2D_ARRAY_VALUES = "values";

/// The archive parent of exception classes: `KTSBasException`.
inline constexpr std::uint32_t cls_BASE_EXCEPTION_CLASS = typ_TypeId(31, 3);
