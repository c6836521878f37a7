// An array as a sequence of the elements of its first dimension.

#include <algorithm>
#include <cstring>
#include <limits>

#include "foundation/coreutils/atr_String.h"
#include "omu/detail/omu_ArrayElements.h"
#include "omu/detail/omu_SequenceShape.h"
#include "omu/omu_PrimArray.h"

using namespace omu_array;

// Index 0 is the start of the data whatever the extent is: an array that has none fails by itself.
const char* omu_PrimArray::Index2Ptr(int index) const {
    if (numDims < 1) Fail("PrimArray index out of bounds: nd<1");
    if (index == 0 && Length() == 0) Fail(kNoItem);
    if (index < 0 || index >= Length()) Fail(atr("PrimArray index out of bounds: [%d]", index));
    const char* const start = ConstGetData();
    return start ? start + std::ptrdiff_t{index} * strides.UncheckedConstGet(0) : start;
}

omu_PrimArray omu_PrimArray::SubArray(int index) const {
    const char* const start = Index2Ptr(index);
    const std::vector<int> dimensions = ToVector(extents);
    omu_PrimArray part;
    part.FromDimsAndData(std::span(dimensions).subspan(1), elementType, start);
    part.pyType = pyType;
    return part;
}

omu_PrimHandle omu_PrimArray::ElementAt(int index) const {
    if (numDims > 1) return omu_PrimHandle(new omu_PrimArray(SubArray(index)));
    return omu_PrimHandle(new omu_PrimNumber(getPrimNumberAtPtr(Index2Ptr(index), elementType)));
}

const omu_Primitive* omu_PrimArray::Index(int index) const {
    auto place = handedOut.find(index);
    if (place == handedOut.end()) place = handedOut.emplace(index, ElementAt(index)).first;
    return place->second.ConstGet();
}

bool omu_PrimArray::ForEachElement(const ElementUse& use) const {
    for (int i = 0; i < Length(); ++i) {
        const bool goesOn = numDims > 1 ? use(SubArray(i), i)
                                        : use(getPrimNumberAtPtr(Index2Ptr(i), elementType), i);
        if (!goesOn) return false;
    }
    return true;
}

cow_List<omu_PrimHandle> omu_PrimArray::Elements() const {
    omu_PrimNesting objects = omu_PrimNesting::OfEmptyContainer();
    objects.nodes += Length();
    objects.Require();
    auto elements = cow_List<omu_PrimHandle>::WithSizeHint(Length());
    for (int i = 0; i < Length(); ++i) elements.Append(ElementAt(i));
    return elements;
}

omu_PrimArray omu_PrimArray::WithLength(std::int64_t length, DataTypeEnm type) const {
    if (length > std::numeric_limits<int>::max()) Fail(kCannotAllocate);
    std::vector<int> dimensions = ToVector(extents);
    if (!dimensions.empty()) dimensions[0] = static_cast<int>(length);
    omu_PrimArray result;
    result.FromDimsAndData(dimensions, type, nullptr);
    return result;
}

omu_PrimArray omu_PrimArray::SpecialSlice(int first, int last) const {
    omu_PrimArray part = WithLength(last - first, elementType);
    part.pyType = pyType;
    if (part.numElements > 0) {
        std::memcpy(part.OwnData(), Index2Ptr(first), static_cast<std::size_t>(part.data->Size()));
    }
    return part;
}

omu_PrimArray* omu_PrimArray::Slice(int first, int last) const {
    const int from = std::clamp(first, 0, Length());
    return new omu_PrimArray(SpecialSlice(from, std::clamp(last, from, Length())));
}

omu_PrimArray omu_PrimArray::Joined(const omu_PrimArray& other) const {
    bool isJoinable = numDims == other.numDims;
    for (int d = 1; isJoinable && d < numDims; ++d) isJoinable = extents[d] == other.extents[d];
    if (!isJoinable) Fail("PrimArray arrays of different dimensions can't be joined");
    omu_PrimArray joined = WithLength(std::int64_t{Length()} + other.Length(),
                                      omu_WiderType(elementType, other.elementType));
    if (joined.numElements > 0) {
        char* const behind = CopyElements(*this, joined.elementType, joined.OwnData());
        CopyElements(other, joined.elementType, behind);
    }
    return joined;
}

omu_PrimArray* omu_PrimArray::Concat(const omu_PrimSequence& other) const {
    const auto* const array = dynamic_cast<const omu_PrimArray*>(&other);
    return new omu_PrimArray(Joined(array ? *array : omu_PrimArray(other)));
}

omu_PrimArray* omu_PrimArray::Repeat(int count) const {
    const std::int64_t times = std::max(count, 0);
    omu_PrimArray repeated = WithLength(times * Length(), elementType);
    repeated.pyType = pyType;
    if (repeated.numElements > 0) {
        char* target = repeated.OwnData();
        for (std::int64_t i = 0; i < times; ++i) target = CopyElements(*this, elementType, target);
    }
    return new omu_PrimArray(repeated);
}
