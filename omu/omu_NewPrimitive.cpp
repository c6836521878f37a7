#include "omu/omu_NewPrimitive.h"

#include "omu/omu_PrimComplex.h"
#include "omu/omu_PrimDictionary.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_PrimTuple.h"

namespace {

/// The tuple of `length` elements, the i-th made by `make(i)`.
template <class Make>
omu_NewPrim TupleOf(int length, Make make) {
    auto elements = cow_List<omu_PrimHandle>::WithSizeHint(length);
    for (int i = 0; i < length; ++i) elements.Append(omu_PrimHandle(make(i).release()));
    return std::make_unique<omu_PrimTuple>(elements);
}

template <class T>
omu_NewPrim TupleOfList(const cow_List<T>& list) {
    return TupleOf(list.Length(), [&list](int i) {
        if constexpr (std::is_same_v<T, float>) {
            return std::make_unique<omu_PrimNumber>(list[i]);
        } else {
            return omu_NewPrimitive(list[i]);
        }
    });
}

template <class T>
omu_NewPrim TupleOfRows(const cow_2DArray<T>& table) {
    return TupleOf(table.Rows(), [&table](int r) {
        return TupleOf(table.Cols(),
                       [&table, r](int c) { return omu_NewPrimitive(table.ConstGet(r, c)); });
    });
}

/// The dictionary of the entries of `map`, each value made by `make`.
template <class V, class Make>
omu_NewPrim DictionaryOf(const cow_Map<cow_String, V>& map, Make make) {
    auto dictionary = std::make_unique<omu_PrimDictionary<cow_String>>();
    for (const auto& [key, value] : map) dictionary->Insert(key, make(value).release());
    return dictionary;
}

}  // namespace

omu_NewPrim omu_NewPrimitive(signed char value) { return std::make_unique<omu_PrimNumber>(value); }
omu_NewPrim omu_NewPrimitive(short value) { return std::make_unique<omu_PrimNumber>(value); }
omu_NewPrim omu_NewPrimitive(int value) { return std::make_unique<omu_PrimNumber>(value); }
omu_NewPrim omu_NewPrimitive(unsigned int value) { return std::make_unique<omu_PrimNumber>(value); }
omu_NewPrim omu_NewPrimitive(double value) { return std::make_unique<omu_PrimNumber>(value); }

omu_NewPrim omu_NewPrimitive(const char* value) {
    return std::make_unique<omu_PrimString>(cow_String(value));
}
omu_NewPrim omu_NewPrimitive(const cow_String& value) {
    return std::make_unique<omu_PrimString>(value);
}
omu_NewPrim omu_NewPrimitive(const atr_String& value) {
    return std::make_unique<omu_PrimTranslatedString>(value);
}
omu_NewPrim omu_NewPrimitive(const omi_complex& value) {
    return std::make_unique<omu_PrimComplex>(value);
}
omu_NewPrim omu_NewPrimitive(const omu_CorvixName& value) {
    return omu_NewPrimitive(value.AsString());
}
omu_NewPrim omu_NewPrimitive(const KTSBasUtlFilePath& value) {
    return omu_NewPrimitive(value.Path());
}

omu_NewPrim omu_NewPrimitive(const cow_List<int>& value) { return TupleOfList(value); }
omu_NewPrim omu_NewPrimitive(const cow_List<float>& value) { return TupleOfList(value); }
omu_NewPrim omu_NewPrimitive(const cow_List<double>& value) { return TupleOfList(value); }
omu_NewPrim omu_NewPrimitive(const cow_List<cow_String>& value) { return TupleOfList(value); }
omu_NewPrim omu_NewPrimitive(const cow_List<atr_String>& value) { return TupleOfList(value); }
omu_NewPrim omu_NewPrimitive(const cow_2DArray<int>& value) { return TupleOfRows(value); }
omu_NewPrim omu_NewPrimitive(const cow_2DArray<double>& value) { return TupleOfRows(value); }
omu_NewPrim omu_NewPrimitive(const cow_2DArray<cow_String>& value) { return TupleOfRows(value); }

omu_NewPrim omu_NewPrimitive(const cow_Map<cow_String, float>& value) {
    return DictionaryOf(value,
                        [](float number) { return std::make_unique<omu_PrimNumber>(number); });
}
omu_NewPrim omu_NewPrimitive(const cow_Map<cow_String, cow_2DArray<double>>& value) {
    return DictionaryOf(value, [](const cow_2DArray<double>& table) { return TupleOfRows(table); });
}
