#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <type_traits>

#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/bio_Buffer.h"
#include "foundation/shared/cls_ClassMetadata.h"

/// The value of a number field as it is handed in or out: every integer of a field fits in the
/// first, every floating-point number in the second.
struct idb_Number {
    bool isReal = false;
    std::int64_t integer = 0;
    double real = 0;
};

template <class T>
[[nodiscard]] idb_Number idb_NumberOf(T value) noexcept {
    if constexpr (std::is_floating_point_v<T>) {
        return {true, 0, static_cast<double>(value)};
    } else if constexpr (std::is_same_v<T, char>) {
        // Signed on every platform, so that the stream is the same on all.
        return {false, static_cast<signed char>(value), 0};
    } else {
        return {false, static_cast<std::int64_t>(value), 0};
    }
}

/// The number as a `T`: the nearest value that `T` has, towards zero; 0 for a NaN without a place.
template <class T>
[[nodiscard]] T idb_NumberAs(const idb_Number& number) noexcept {
    if constexpr (std::is_same_v<T, bool>) {
        return number.isReal ? number.real != 0 : number.integer != 0;
    } else if constexpr (std::is_floating_point_v<T>) {
        return number.isReal ? static_cast<T>(number.real) : static_cast<T>(number.integer);
    } else if constexpr (std::is_same_v<T, char>) {
        return static_cast<char>(idb_NumberAs<signed char>(number));
    } else {
        constexpr auto lowest = std::numeric_limits<T>::min();
        constexpr auto highest = std::numeric_limits<T>::max();
        if (number.isReal) {
            if (!(number.real > static_cast<double>(lowest))) {
                return number.real <= static_cast<double>(lowest) ? lowest : T{0};
            }
            return number.real < static_cast<double>(highest) ? static_cast<T>(number.real)
                                                              : highest;
        }
        if (number.integer < static_cast<std::int64_t>(lowest)) return lowest;
        if (number.integer > static_cast<std::int64_t>(highest)) return highest;
        return static_cast<T>(number.integer);
    }
}

/// Encodes `number` at `place` in the form of a field of `kind` (a `cls_KindEnm` of 4 or 8 bytes).
void idb_StoreNumber(int kind, std::byte* place, const idb_Number& number) noexcept;
/// Decodes the field of `kind` at `place`.
[[nodiscard]] idb_Number idb_LoadNumber(int kind, const std::byte* place) noexcept;

/// `idb_StoreNumber` and `idb_LoadNumber`, without the way through a number where the field has the
/// type of the value.
template <class T>
void idb_StoreField(int kind, std::byte* place, const T& value) noexcept {
    if constexpr (std::is_same_v<T, double>) {
        if (kind == cls_KIND_DOUBLE) {
            return bio_Buffer::Put(place, std::bit_cast<std::uint64_t>(value));
        }
    } else if constexpr (std::is_same_v<T, float>) {
        if (kind == cls_KIND_FLOAT) {
            return bio_Buffer::Put(place, std::bit_cast<std::uint32_t>(value));
        }
    } else if constexpr (std::is_same_v<T, int>) {
        if (kind == cls_KIND_INT) return bio_Buffer::Put(place, static_cast<std::uint32_t>(value));
    }
    idb_StoreNumber(kind, place, idb_NumberOf(value));
}
template <class T>
[[nodiscard]] T idb_LoadField(int kind, const std::byte* place) noexcept {
    if constexpr (std::is_same_v<T, double>) {
        if (kind == cls_KIND_DOUBLE) return std::bit_cast<double>(bio_Buffer::Get64(place));
    } else if constexpr (std::is_same_v<T, float>) {
        if (kind == cls_KIND_FLOAT) return std::bit_cast<float>(bio_Buffer::Get32(place));
    } else if constexpr (std::is_same_v<T, int>) {
        if (kind == cls_KIND_INT) return static_cast<int>(bio_Buffer::Get32(place));
    }
    return idb_NumberAs<T>(idb_LoadNumber(kind, place));
}

/// The number as decimal text, and the number that a text is from its first to its last character;
/// 0 for any other text.
[[nodiscard]] cow_String idb_TextOf(const idb_Number& number);
[[nodiscard]] idb_Number idb_ParseNumber(std::string_view text) noexcept;
