#pragma once

#include <concepts>
#include <memory>

#include "cow/cow_2DArray.h"
#include "cow/cow_List.h"
#include "cow/cow_Map.h"
#include "foundation/coreutils/atr_String.h"
#include "foundation/coreutils/omi_complex.h"
#include "foundation/shared/KTSBasUtlFilePath.h"
#include "omu/omu_CorvixName.h"
#include "omu/omu_PrimBoolean.h"
#include "omu/omu_Primitive.h"

/// The primitive of a value: the mirror of `omu_Convert`, so that what is made here is read back as
/// the same value. Lists and tables become tuples, maps dictionaries, names and paths strings.

using omu_NewPrim = std::unique_ptr<omu_Primitive>;

[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(signed char value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(short value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(int value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(unsigned int value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(double value);
/// Null is the empty string.
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const char* value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const cow_String& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const atr_String& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const omi_complex& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const cow_List<int>& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const cow_List<float>& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const cow_List<double>& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const cow_List<cow_String>& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const cow_List<atr_String>& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const cow_2DArray<int>& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const cow_2DArray<double>& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const cow_2DArray<cow_String>& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const cow_Map<cow_String, float>& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim
omu_NewPrimitive(const cow_Map<cow_String, cow_2DArray<double>>& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const omu_CorvixName& value);
[[nodiscard]] KTSOVUGEOM_API omu_NewPrim omu_NewPrimitive(const KTSBasUtlFilePath& value);

/// (Exactly `bool`: pointers do not convert.)
template <std::same_as<bool> Boolean>
[[nodiscard]] omu_NewPrim omu_NewPrimitive(Boolean value) {
    return std::make_unique<omu_PrimBoolean>(value);
}

/// A copy of a primitive.
template <std::derived_from<omu_Primitive> Kind>
[[nodiscard]] omu_NewPrim omu_NewPrimitive(const Kind& value) {
    return omu_NewPrim(value.Copy());
}

/// The types of which there are primitives.
template <class T>
concept omu_PutType = requires(const T& value) {
    omu_NewPrimitive(value);
};
