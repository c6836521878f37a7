#include "omu/omu_Get.h"

#include <cstdio>
#include <cstdlib>

#include "omu/detail/omu_ConvertRows.h"

namespace {

/// Passes `isTaken` on; a failure is traced.
bool Traced(bool isTaken, const char* word) {
    if (!isTaken && std::getenv("ZRX_DBG_PRIMARRAY")) {
        std::fputs(atr("error getting %s\n", word).Characters(), stderr);
    }
    return isTaken;
}

template <class T>
bool ConvertList(const omu_Primitive& value, cow_List<T>& out, omu_TypeFault& fault) {
    const char* const word = omu_ExpectedWord<cow_List<T>>;
    const bool isTaken = omu_Convert(value, out);
    if (!isTaken) fault = {value.TypeString(), word, {}};
    return Traced(isTaken, word);
}

template <class T>
bool ConvertTable(const omu_Primitive& value, cow_2DArray<T>& out, omu_TypeFault& fault) {
    return Traced(omu_ConvertTable(value, out, fault), omu_ExpectedWord<cow_2DArray<T>>);
}

template <class T>
bool ConvertRows(const omu_Primitive& value, cow_List<cow_List<T>>& out, omu_TypeFault& fault) {
    const char* const word = omu_ExpectedWord<cow_2DArray<T>>;
    return Traced(omu_ConvertRows(value, word, out, fault), word);
}

}  // namespace

bool omu_Convert(const omu_Primitive& value, omu_SequenceTarget<cow_List<int>>& out,
                 omu_TypeFault& fault) {
    return ConvertList(value, out.value, fault);
}
bool omu_Convert(const omu_Primitive& value, omu_SequenceTarget<cow_List<double>>& out,
                 omu_TypeFault& fault) {
    return ConvertList(value, out.value, fault);
}
bool omu_Convert(const omu_Primitive& value, omu_SequenceTarget<cow_List<cow_String>>& out,
                 omu_TypeFault& fault) {
    return ConvertList(value, out.value, fault);
}
bool omu_Convert(const omu_Primitive& value, omu_SequenceTarget<cow_2DArray<int>>& out,
                 omu_TypeFault& fault) {
    return ConvertTable(value, out.value, fault);
}
bool omu_Convert(const omu_Primitive& value, omu_SequenceTarget<cow_2DArray<double>>& out,
                 omu_TypeFault& fault) {
    return ConvertTable(value, out.value, fault);
}
bool omu_Convert(const omu_Primitive& value, omu_SequenceTarget<cow_2DArray<cow_String>>& out,
                 omu_TypeFault& fault) {
    return ConvertTable(value, out.value, fault);
}
bool omu_Convert(const omu_Primitive& value, omu_RowsTarget<int>& out, omu_TypeFault& fault) {
    return ConvertRows(value, out.value, fault);
}
bool omu_Convert(const omu_Primitive& value, omu_RowsTarget<double>& out, omu_TypeFault& fault) {
    return ConvertRows(value, out.value, fault);
}
