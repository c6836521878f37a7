#pragma once

#include "foundation/coreutils/KTSBasCoreUtilsExport.h"
#include "foundation/coreutils/cow_String.h"

/// Significant digits of every double that is shown to a user.
inline constexpr int aio_PRECISION = 15;

/// The text of `value` with up to `precision` significant digits (clamped to 1 to 17), in fixed or
/// scientific notation as C's "%.<precision>g" chooses: no trailing zeros, exponents of at least
/// two digits. The same on every platform and in every locale. Infinities are "inf" and "-inf"; a
/// NaN is "nan" whatever its sign.
[[nodiscard]] KTSBASCOREUTILS_API cow_String aio_FormatDouble(double value, int precision);
