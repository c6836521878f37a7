#pragma once

#include <concepts>

#include "cow/cow_2DArray.h"
#include "cow/cow_List.h"
#include "omu/omu_Arguments.h"

/// Reading of lists and tables by functions that name the element at fault: that of a table is the
/// row or the element, "points[3][0]; found string, expecting float", unless rows differ in length.
/// A list is taken or refused as a whole. With `ZRX_DBG_PRIMARRAY` set, each value that is refused
/// prints a line on standard error.

/// The variable of `omu_Get`.
template <class T>
struct omu_SequenceTarget {
    T& value;
};
/// The variable of `omu_GetIrregular`.
template <class T>
struct omu_RowsTarget {
    cow_List<cow_List<T>>& value;
};

[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              omu_SequenceTarget<cow_List<int>>& out,
                                              omu_TypeFault& fault);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              omu_SequenceTarget<cow_List<double>>& out,
                                              omu_TypeFault& fault);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              omu_SequenceTarget<cow_List<cow_String>>& out,
                                              omu_TypeFault& fault);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              omu_SequenceTarget<cow_2DArray<int>>& out,
                                              omu_TypeFault& fault);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              omu_SequenceTarget<cow_2DArray<double>>& out,
                                              omu_TypeFault& fault);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              omu_SequenceTarget<cow_2DArray<cow_String>>& out,
                                              omu_TypeFault& fault);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value, omu_RowsTarget<int>& out,
                                              omu_TypeFault& fault);
[[nodiscard]] KTSOVUGEOM_API bool omu_Convert(const omu_Primitive& value,
                                              omu_RowsTarget<double>& out, omu_TypeFault& fault);

/// A `cow_List` or `cow_2DArray` of `int`, `double` or `cow_String`.
template <class T>
concept omu_SequenceType = omu_GetType<omu_SequenceTarget<T>>;

/// Reads the next argument as `omu_Arguments::Get` does, by its position or by `keyword`: nothing
/// is raised, and `End` tells of a fault.
template <omu_SequenceType T>
void omu_Get(omu_Arguments& arguments, T& value, const cow_String& keyword) {
    omu_SequenceTarget<T> target{value};
    arguments.Get(target, keyword);
}
/// Reads the next element of a tuple, or argument by its position alone.
template <std::derived_from<omu_PrimTuple> Reader, omu_SequenceType T>
void omu_Get(Reader& elements, T& value) {
    omu_SequenceTarget<T> target{value};
    elements.Get(target);
}

/// `int` or `double`.
template <class T>
concept omu_RowElement = omu_GetType<omu_RowsTarget<T>>;

/// As `omu_Get` for a table whose rows may differ in length.
template <omu_RowElement T>
void omu_GetIrregular(omu_Arguments& arguments, cow_List<cow_List<T>>& value,
                      const cow_String& keyword) {
    omu_RowsTarget<T> target{value};
    arguments.Get(target, keyword);
}
template <std::derived_from<omu_PrimTuple> Reader, omu_RowElement T>
void omu_GetIrregular(Reader& elements, cow_List<cow_List<T>>& value) {
    omu_RowsTarget<T> target{value};
    elements.Get(target);
}
