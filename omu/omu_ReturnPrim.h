#pragma once

#include "cow/cow_2DArray.h"
#include "cow/cow_List.h"
#include "cow/cow_Map.h"
#include "omu/omu_PrimNumber.h"

/// The result of a command as a new primitive, owned by the receiver: lists as tuples, tables as
/// tuples of their rows, the map as a dictionary of these. (Single numbers: `omu_PrimNumber.h`.)

[[nodiscard]] KTSOVUGEOM_API omu_Primitive* omu_ReturnPrim(const cow_List<int>& result);
[[nodiscard]] KTSOVUGEOM_API omu_Primitive* omu_ReturnPrim(const cow_List<double>& result);
[[nodiscard]] KTSOVUGEOM_API omu_Primitive* omu_ReturnPrim(const cow_List<cow_String>& result);
[[nodiscard]] KTSOVUGEOM_API omu_Primitive* omu_ReturnPrim(const cow_2DArray<int>& result);
[[nodiscard]] KTSOVUGEOM_API omu_Primitive* omu_ReturnPrim(const cow_2DArray<double>& result);
[[nodiscard]] KTSOVUGEOM_API omu_Primitive* omu_ReturnPrim(const cow_2DArray<cow_String>& result);
[[nodiscard]] KTSOVUGEOM_API omu_Primitive* omu_ReturnPrim(
    const cow_Map<cow_String, cow_2DArray<double>>& result);
