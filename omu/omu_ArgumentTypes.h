#pragma once

#include <concepts>
#include <vector>

#include "cow/cow_2DArray.h"
#include "cow/cow_List.h"
#include "cow/cow_Map.h"
#include "foundation/shared/KTSBasUtlFilePath.h"
#include "omu/omu_CorvixName.h"
#include "omu/omu_PrimArray.h"
#include "omu/omu_PrimConvert.h"
#include "omu/omu_PrimDictionary.h"
#include "omu/omu_PrimEnumBase.h"
#include "omu/omu_PrimPath.h"
#include "omu/omu_PrimTuple.h"
#include "omu/omu_PrimType.h"

/// What arguments are read into, besides the scalars of `omu_PrimConvert.h`: which values each type
/// accepts, and the word for it in the message about any other value.
///
/// Every `omu_Convert` answers false, and leaves `out` untouched, for a value that it does not
/// accept; none raises, save for exhausted memory. Lists, tables and tuples are made of tuples,
/// lists and arrays, whose elements are taken as the scalars are.
///
/// A type of a client's own becomes readable by an `omu_Convert` beside it: with the two parameters
/// of those below and a word, or with an `omu_TypeFault` as the third one, which it fills.

[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, cow_List<int>& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, cow_List<float>& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, cow_List<double>& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              cow_List<cow_String>& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              cow_List<atr_String>& out);
/// A sequence of rows of the same length.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, cow_2DArray<double>& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              cow_2DArray<cow_String>& out);
/// A dictionary with text keys and numbers.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              cow_Map<cow_String, float>& out);
/// A dictionary with such keys, or an empty one of any kind.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              omu_PrimDictionary<int>& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              omu_PrimDictionary<cow_String>& out);
/// An array, or nested sequences of numbers that make one.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, omu_PrimArray& out);
/// A sequence, as a tuple to be read from its start.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, omu_PrimTuple& out);
/// An enumeration or a string whose name is permitted.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, omu_PrimEnumBase& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, omu_PrimNone& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, omu_PrimPath& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, omu_PrimType& out);
/// A string, kept as an untested name: the command tests it once its last argument is read, since
/// faults of the call come first.
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, omu_CorvixName& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, KTSBasUtlFilePath& out);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              KTSBasUtlFilePathCae& out);

/// The word for a `T` in messages; null: the type string of the variable, a primitive.
template <class T>
inline constexpr const char* omu_ExpectedWord = nullptr;
template <std::integral T>
inline constexpr const char* omu_ExpectedWord<T> = "int";
template <std::floating_point T>
inline constexpr const char* omu_ExpectedWord<T> = "float";
template <>
inline constexpr const char* omu_ExpectedWord<bool> = "Boolean";
template <>
inline constexpr const char* omu_ExpectedWord<omi_complex> = "complex";
template <>
inline constexpr const char* omu_ExpectedWord<cow_String> = "string";
template <>
inline constexpr const char* omu_ExpectedWord<atr_String> = "tran_string";
template <>
inline constexpr const char* omu_ExpectedWord<omu_CorvixName> = "string";
template <>
inline constexpr const char* omu_ExpectedWord<KTSBasUtlFilePath> = "string";
template <>
inline constexpr const char* omu_ExpectedWord<KTSBasUtlFilePathCae> = "string";
template <>
inline constexpr const char* omu_ExpectedWord<cow_List<int>> = "sequence of Integers";
template <>
inline constexpr const char* omu_ExpectedWord<cow_List<float>> = "sequence of Floats";
template <>
inline constexpr const char* omu_ExpectedWord<cow_List<double>> = "sequence of Doubles";
template <>
inline constexpr const char* omu_ExpectedWord<cow_List<cow_String>> = "sequence of Strings";
template <>
inline constexpr const char* omu_ExpectedWord<cow_List<atr_String>> =
    "sequence of Translated Strings";
template <>
inline constexpr const char* omu_ExpectedWord<cow_2DArray<int>> = "2D sequence of Integers";
template <>
inline constexpr const char* omu_ExpectedWord<cow_2DArray<double>> = "2D sequence of Doubles";
template <>
inline constexpr const char* omu_ExpectedWord<cow_2DArray<cow_String>> = "2D sequence of Strings";
template <>
inline constexpr const char* omu_ExpectedWord<cow_Map<cow_String, float>> = "dictionary";
/// (Whatever kind the variable names.)
template <>
inline constexpr const char* omu_ExpectedWord<omu_PrimType> = "type";

/// Why a value was not taken: the words for what it is and what was wanted. Words are not
/// translated.
struct omu_TypeFault {
    cow_String found;
    cow_String expected;
    /// Which part of the value it was: indices from 0, outermost first; none: the whole value.
    std::vector<int> place;
};

/// The types that an argument can be read into: those with an `omu_Convert`.
template <class T>
concept omu_GetType = requires(const omu_Primitive& value, T& out) {
    omu_Convert(value, out);
}
|| requires(const omu_Primitive& value, T& out, omu_TypeFault& fault) {
    omu_Convert(value, out, fault);
};

/// A variable that an argument is read into.
class omu_ArgumentTarget {
  public:
    template <omu_GetType T>
    explicit omu_ArgumentTarget(T& out) noexcept : variable(&out), convert(&ConvertTo<T>) {}

    /// Takes `value` into the variable; false, with the fault, when it is not accepted.
    [[nodiscard]] bool Take(const omu_Primitive& value, omu_TypeFault& fault) const {
        return convert(value, variable, fault);
    }

  private:
    template <class T>
    static bool ConvertTo(const omu_Primitive& value, void* out, omu_TypeFault& fault) {
        T& target = *static_cast<T*>(out);
        if constexpr (requires { omu_Convert(value, target, fault); }) {
            return omu_Convert(value, target, fault);
        } else {
            if (omu_Convert(value, target)) return true;
            fault.found = value.TypeString();
            if constexpr (omu_ExpectedWord<T> != nullptr) {
                fault.expected = omu_ExpectedWord<T>;
            } else {
                fault.expected = target.TypeString();
            }
            return false;
        }
    }

    void* variable;
    bool (*convert)(const omu_Primitive& value, void* out, omu_TypeFault& fault);
};

template <class T>
void omu_PrimTuple::Get(T& value) {
    if constexpr (std::derived_from<T, omu_PrimTuple>) {
        Get(static_cast<omu_PrimTuple&>(value));
    } else {
        Read(omu_ArgumentTarget(value));
    }
}
