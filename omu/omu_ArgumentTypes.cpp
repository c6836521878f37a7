#include "omu/omu_ArgumentTypes.h"

#include "foundation/shared/nex_Exception.h"
#include "omu/detail/omu_ConvertRows.h"
#include "omu/omu_PrimString.h"

namespace {

template <class T>
bool ConvertList(const omu_Primitive& value, cow_List<T>& out) {
    const auto* const sequence = dynamic_cast<const omu_PrimSequence*>(&value);
    if (!sequence) return false;
    auto list = cow_List<T>::WithSizeHint(sequence->Length());
    const bool all = sequence->ForEachElement([&list](const omu_Primitive& element, int) {
        T item{};
        if (!omu_Convert(element, item)) return false;
        list.Append(item);
        return true;
    });
    if (all) out = list;
    return all;
}

template <class T>
bool ConvertTable(const omu_Primitive& value, cow_2DArray<T>& out) {
    omu_TypeFault ofElement;
    return omu_ConvertTable(value, out, ofElement);
}

template <class Key>
bool ConvertDictionary(const omu_Primitive& value, omu_PrimDictionary<Key>& out) {
    if (const auto* same = dynamic_cast<const omu_PrimDictionary<Key>*>(&value)) {
        out = *same;
        return true;
    }
    if (!value.IsType(omu_PrimTag::kDictionary) ||
        !static_cast<const omu_PrimDictionaryBase&>(value).IsEmpty()) {
        return false;
    }
    out = omu_PrimDictionary<Key>();
    return true;
}

/// A primitive of the same kind.
template <class Kind>
bool ConvertSame(const omu_Primitive& value, Kind& out) {
    const auto* const same = dynamic_cast<const Kind*>(&value);
    if (same) out = *same;
    return same != nullptr;
}

/// The elements of a sequence as a `Kind`; what that refuses is not of its type.
template <class Kind>
bool ConvertSequence(const omu_Primitive& value, Kind& out) {
    const auto* const sequence = dynamic_cast<const omu_PrimSequence*>(&value);
    if (!sequence) return false;
    try {
        out = Kind(*sequence);
        return true;
    } catch (const nex_Exception&) {
        return false;  // not of numbers, ragged, too large
    }
}

template <class Path>
bool ConvertPath(const omu_Primitive& value, Path& out) {
    cow_String text;
    if (!omu_Convert(value, text)) return false;
    out = Path(text);
    return true;
}

}  // namespace

bool omu_Convert(const omu_Primitive& value, cow_List<int>& out) { return ConvertList(value, out); }
bool omu_Convert(const omu_Primitive& value, cow_List<float>& out) {
    return ConvertList(value, out);
}
bool omu_Convert(const omu_Primitive& value, cow_List<double>& out) {
    return ConvertList(value, out);
}
bool omu_Convert(const omu_Primitive& value, cow_List<cow_String>& out) {
    return ConvertList(value, out);
}
bool omu_Convert(const omu_Primitive& value, cow_List<atr_String>& out) {
    return ConvertList(value, out);
}

bool omu_Convert(const omu_Primitive& value, cow_2DArray<double>& out) {
    return ConvertTable(value, out);
}
bool omu_Convert(const omu_Primitive& value, cow_2DArray<cow_String>& out) {
    return ConvertTable(value, out);
}

bool omu_Convert(const omu_Primitive& value, cow_Map<cow_String, float>& out) {
    omu_PrimDictionary<cow_String> dictionary;
    if (!omu_Convert(value, dictionary)) return false;
    cow_Map<cow_String, float> map;
    for (int i = 0; i < dictionary.Length(); ++i) {
        float number = 0;
        if (!omu_Convert(dictionary.ConstGetValue(i), number)) return false;
        map.Insert(dictionary.ConstGetKey(i), number);
    }
    out = map;
    return true;
}

bool omu_Convert(const omu_Primitive& value, omu_PrimDictionary<int>& out) {
    return ConvertDictionary(value, out);
}
bool omu_Convert(const omu_Primitive& value, omu_PrimDictionary<cow_String>& out) {
    return ConvertDictionary(value, out);
}

bool omu_Convert(const omu_Primitive& value, omu_PrimArray& out) {
    return ConvertSame(value, out) || ConvertSequence(value, out);
}
bool omu_Convert(const omu_Primitive& value, omu_PrimTuple& out) {
    return ConvertSequence(value, out);
}

bool omu_Convert(const omu_Primitive& value, omu_PrimEnumBase& out) {
    if (value.IsType(omu_PrimTag::kEnum)) {
        return out.SetName(static_cast<const omu_PrimEnumBase&>(value).CurrentName());
    }
    return value.IsType(omu_PrimTag::kString) &&
           out.SetName(static_cast<const omu_PrimString&>(value).Value());
}

bool omu_Convert(const omu_Primitive& value, omu_PrimNone&) {
    return value.IsType(omu_PrimTag::kNone);
}
bool omu_Convert(const omu_Primitive& value, omu_PrimPath& out) { return ConvertSame(value, out); }
bool omu_Convert(const omu_Primitive& value, omu_PrimType& out) { return ConvertSame(value, out); }

bool omu_Convert(const omu_Primitive& value, omu_CorvixName& out) {
    cow_String text;
    if (!omu_Convert(value, text)) return false;
    out = omu_CorvixName(text, omu_UNTESTED_NAME);
    return true;
}

bool omu_Convert(const omu_Primitive& value, KTSBasUtlFilePath& out) {
    return ConvertPath(value, out);
}
bool omu_Convert(const omu_Primitive& value, KTSBasUtlFilePathCae& out) {
    return ConvertPath(value, out);
}
