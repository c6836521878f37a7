#pragma once

#include <algorithm>
#include <vector>

#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimSequence.h"

/// The form of nested sequences of numbers.
struct omu_SequenceShape {
    std::vector<int> extents;
    /// The widest type of all numbers.
    omu_PrimNumber::DataTypeEnm type = omu_PrimNumber::INT;
    bool hasNumbers = false;
};

/// Finds the form of `sequence`: "", or why it has none.
[[nodiscard]] cow_String getDimensionsFromSequence(const omu_PrimSequence& sequence,
                                                   omu_SequenceShape& shape);

/// The wider of two element types, `INT` < `FLOAT` < `DOUBLE`.
[[nodiscard]] constexpr omu_PrimNumber::DataTypeEnm omu_WiderType(
    omu_PrimNumber::DataTypeEnm a, omu_PrimNumber::DataTypeEnm b) noexcept {
    static_assert(omu_PrimNumber::INT < omu_PrimNumber::FLOAT &&
                  omu_PrimNumber::FLOAT < omu_PrimNumber::DOUBLE);
    return std::max(a, b);
}

/// The number that `value` is; null for any other primitive. A tag tells the class.
[[nodiscard]] inline const omu_PrimNumber* omu_NumberIn(const omu_Primitive& value) noexcept {
    const bool isNumber = value.IsType(omu_PrimTag::kInt) || value.IsType(omu_PrimTag::kFloat);
    return isNumber ? static_cast<const omu_PrimNumber*>(&value) : nullptr;
}
