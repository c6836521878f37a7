#include "omu/omu_ReturnPrim.h"

#include "omu/omu_NewPrimitive.h"

omu_Primitive* omu_ReturnPrim(const cow_List<int>& result) {
    return omu_NewPrimitive(result).release();
}
omu_Primitive* omu_ReturnPrim(const cow_List<double>& result) {
    return omu_NewPrimitive(result).release();
}
omu_Primitive* omu_ReturnPrim(const cow_List<cow_String>& result) {
    return omu_NewPrimitive(result).release();
}
omu_Primitive* omu_ReturnPrim(const cow_2DArray<int>& result) {
    return omu_NewPrimitive(result).release();
}
omu_Primitive* omu_ReturnPrim(const cow_2DArray<double>& result) {
    return omu_NewPrimitive(result).release();
}
omu_Primitive* omu_ReturnPrim(const cow_2DArray<cow_String>& result) {
    return omu_NewPrimitive(result).release();
}
omu_Primitive* omu_ReturnPrim(const cow_Map<cow_String, cow_2DArray<double>>& result) {
    return omu_NewPrimitive(result).release();
}
