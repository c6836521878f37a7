#include "utf/utf_QuaternionAdapter.h"

#include <algorithm>

namespace {

template <class T>
cow_2DArray<T> ArrayOf(const cow_List<cow_List<T>>& lists) {
    cow_2DArray<T> result(3, 3);
    for (int r = 0; r < std::min(3, lists.Length()); ++r) {
        const cow_List<T>& row = lists.ConstGet(r);
        for (int c = 0; c < std::min(3, row.Length()); ++c) result.Get(r, c) = row.ConstGet(c);
    }
    return result;
}

}  // namespace

template <class T>
utf_QuaternionAdapter<T>::utf_QuaternionAdapter(res_DataTypeEnm dataType,
                                                const cow_List<cow_List<T>>& cosines)
    : utf_QuaternionAdapter(utf_Quaternion<T>(dataType, ArrayOf(cosines))) {}

template <class T>
utf_QuaternionAdapter<T>::utf_QuaternionAdapter(const utf_Quaternion<T>& quaternion)
    : utf_EngineeringData<T>(quaternion) {}

template <class T>
utf_Quaternion<T> utf_QuaternionAdapter<T>::Quaternion() const {
    return utf_Quaternion<T>(this->type(), this->Components());
}

template <class T>
cow_List<cow_List<T>> utf_QuaternionAdapter<T>::cosines() const {
    T rows[3][3] = {};
    Quaternion().cosines(rows);
    cow_List<cow_List<T>> result;
    for (const auto& row : rows) result.Append(cow_List<T>(row, 3, 0));
    return result;
}

template class utf_QuaternionAdapter<float>;
template class utf_QuaternionAdapter<double>;
