#pragma once

#include "cow/cow_List.h"
#include "utf/utf_Quaternion.h"

/// A quaternion as the scripting layer sees it: built from, and given out as, nested lists of
/// direction cosines whose rows are the local axes.
template <class T>
class utf_QuaternionAdapter : public utf_EngineeringData<T> {
  public:
    /// From direction cosines; rows and entries that are missing count as zero. Throws
    /// `nex_PrimException` "Unknown quaternion type" unless `dataType` is 6 or 7.
    utf_QuaternionAdapter(res_DataTypeEnm dataType, const cow_List<cow_List<T>>& cosines);
    explicit utf_QuaternionAdapter(const utf_Quaternion<T>& quaternion);

    [[nodiscard]] utf_QuaternionAdapter* Copy() const override {
        return new utf_QuaternionAdapter(*this);
    }
    /// The quaternion that the adapter holds.
    [[nodiscard]] utf_Quaternion<T> Quaternion() const;
    /// Three rows of three direction cosines (`utf_Quaternion::cosines`).
    [[nodiscard]] cow_List<cow_List<T>> cosines() const;
};

using utf_QuaternionFloatAdapter = utf_QuaternionAdapter<float>;
using utf_QuaternionDoubleAdapter = utf_QuaternionAdapter<double>;

extern template class KTSOVUGEOM_API utf_QuaternionAdapter<float>;
extern template class KTSOVUGEOM_API utf_QuaternionAdapter<double>;
