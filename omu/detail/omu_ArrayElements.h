#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "omu/omu_PrimArray.h"

/// What the operations of arrays share: how elements lie in memory, and how failures are raised.
namespace omu_array {

using DataTypeEnm = omu_PrimNumber::DataTypeEnm;

inline constexpr char kNegativeDimensions[] = "PrimArray negative dimensions are not allowed";
inline constexpr char kCannotAllocate[] = "PrimArray can't allocate memory for array (data)";
inline constexpr char kForeignType[] = "PrimArray only INT, FLOAT, DOUBLE allowed";
inline constexpr char kNoItem[] = "PrimArray ConstGetNumericItem failed";

/// The bytes that an array, and a text, can have.
inline constexpr std::int64_t kMaxBytes = std::numeric_limits<std::int32_t>::max();

/// Raises `omu_ValueErrorException` with the source position of the caller.
[[noreturn]] void Fail(const cow_String& text, const char* file = __builtin_FILE(),
                       int line = __builtin_LINE());

/// Refuses a number of dimensions that no array has.
void RequireDimensionCount(int numDimensions);

/// The bytes from one index to the next of each dimension, then those of the whole: all products of
/// the extents from the last one on. What no array can have is refused.
[[nodiscard]] std::vector<int> StridesOf(std::span<const int> dimensions, int itemSize);

/// The bytes of the whole; without dimensions there are no elements.
[[nodiscard]] inline int BytesOf(std::span<const int> dimensions,
                                 const std::vector<int>& stridesAndTotal) {
    return dimensions.empty() ? 0 : stridesAndTotal.back();
}

[[nodiscard]] inline std::vector<int> ToVector(const cow_List<int>& list) {
    return {list.begin(), list.end()};
}

/// The element of `type` at `address`.
[[nodiscard]] inline double Load(const char* address, DataTypeEnm type) {
    return getPrimNumberAtPtr(address, type).AsDouble();
}

/// Writes `number` as an element of `type`: truncated and saturated, or rounded.
void Store(char* address, DataTypeEnm type, double number);

/// Copies all elements of `source` to `target`, as elements of `type`; the address behind them.
char* CopyElements(const omu_PrimArray& source, DataTypeEnm type, char* target);

}  // namespace omu_array
