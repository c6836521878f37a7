#include "omu/omu_PrimArray.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <vector>

#include "foundation/coreutils/typ_DebugFlags.h"
#include "omu/detail/omu_ArrayElements.h"
#include "omu/detail/omu_SequenceShape.h"
#include "omu/detail/omu_TracePrimArray.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_PrimVisitor.h"

using namespace omu_array;

namespace {

/// The flag of arrays among the foundation's debug flags, and the level that logs it.
constexpr int kDebugFlag = 19;
constexpr int kLogLevel = 2;

/// Copies the numbers of nested sequences of a known form to `target` and moves it on; false for an
/// unsigned number that an integer element cannot hold.
bool copyValues(const omu_PrimSequence& sequence, DataTypeEnm type, char*& target) {
    if (sequence.IsType(omu_PrimTag::kArray)) {
        target = CopyElements(static_cast<const omu_PrimArray&>(sequence), type, target);
        return true;
    }
    return sequence.ForEachElement([type, &target](const omu_Primitive& child, int) {
        const omu_PrimNumber* const number = omu_NumberIn(child);
        if (!number) {
            return copyValues(static_cast<const omu_PrimSequence&>(child), type, target);
        }
        const double value = number->AsDouble();
        if (type == omu_PrimNumber::INT && value > std::numeric_limits<int>::max()) return false;
        Store(target, type, value);
        target += omu_PrimArray::ItemSize(type);
        return true;
    });
}

template <class T>
bool IsSame(const char* a, const char* b) {
    T first;
    T second;
    std::memcpy(&first, a, sizeof first);
    std::memcpy(&second, b, sizeof second);
    return first == second;
}

/// The index of the first of `count` elements that differs; `count` when none does.
template <class T>
int FirstDifferenceOf(const char* a, const char* b, int count) {
    const std::size_t size = sizeof(T);
    int i = 0;
    while (i < count && IsSame<T>(a + static_cast<std::size_t>(i) * size,
                                  b + static_cast<std::size_t>(i) * size)) {
        ++i;
    }
    return i;
}

/// Logs why two arrays differ.
void Log(const char* format, const cow_String& a = {}, const cow_String& b = {}, int index = 0) {
    if (typ_DebugFlags::Level(kDebugFlag) < kLogLevel) return;
    const cow_String line = atr(format, a, b, index);
    std::fwrite(line.Characters(), 1, static_cast<std::size_t>(line.Length()), stderr);
}

/// Refuses a text before it is written when its brackets or commas alone would be too long.
void RequireTextFits(const cow_List<int>& extents) {
    std::int64_t sequences = 1;
    for (const int extent : extents) {
        sequences *= extent;
        if (2 * sequences > kMaxBytes) throw std::length_error("text of an array");
    }
}

void AppendNumber(std::string& text, const char* element, DataTypeEnm type) {
    if (type != omu_PrimNumber::INT) {
        text += omu_PrimNumber::FloatText(Load(element, type)).View();
        return;
    }
    int number = 0;
    std::memcpy(&number, element, sizeof number);
    std::array<char, 12> digits;
    text.append(digits.data(),
                std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

}  // namespace

omu_PrimArray::omu_PrimArray(int numDimensions) : omu_PrimSequence(omu_PrimTag::kArray) {
    omu_TracePrimArray("omu_PrimArray() 5\n");
    RequireDimensionCount(numDimensions);
    numDims = numDimensions;
    extents.Fill(numDims, 0);
    strides.Fill(numDims, 0);
    if (numDims > 0) strides.Get(numDims - 1) = ConstGetItemSize();
}

omu_PrimArray::omu_PrimArray(int numDimensions, const int* dimensions, const int* source)
    : omu_PrimSequence(omu_PrimTag::kArray) {
    omu_TracePrimArray("omu_PrimArray() 1\n");
    FromPointers(numDimensions, dimensions, omu_PrimNumber::INT, source);
}

omu_PrimArray::omu_PrimArray(int numDimensions, const int* dimensions, const float* source)
    : omu_PrimSequence(omu_PrimTag::kArray) {
    omu_TracePrimArray("omu_PrimArray() 2\n");
    FromPointers(numDimensions, dimensions, omu_PrimNumber::FLOAT, source);
}

omu_PrimArray::omu_PrimArray(int numDimensions, const int* dimensions, const double* source)
    : omu_PrimSequence(omu_PrimTag::kArray) {
    omu_TracePrimArray("omu_PrimArray() 3\n");
    FromPointers(numDimensions, dimensions, omu_PrimNumber::DOUBLE, source);
}

omu_PrimArray::omu_PrimArray(int numDimensions, const int* dimensions, DataTypeEnm type,
                             const void* source)
    : omu_PrimSequence(omu_PrimTag::kArray) {
    omu_TracePrimArray("omu_PrimArray() 4\n");
    FromPointers(numDimensions, dimensions, type, source);
    omu_TracePrimArray("omu_PrimArray() 41\n");
}

omu_PrimArray::omu_PrimArray(const omu_PrimSequence& sequence)
    : omu_PrimSequence(omu_PrimTag::kArray) {
    omu_TracePrimArray("omu_PrimArray() 6\n");
    FromSequence(sequence);
}

omu_PrimArray::omu_PrimArray(const omu_PrimArray& other)
    : omu_PrimSequence(other),
      numDims(other.numDims),
      extents(other.extents),
      strides(other.strides),
      data(other.data),
      elementType(other.elementType),
      pyType(other.pyType),
      numElements(other.numElements) {
    omu_TracePrimArray("omu_PrimArray() 7\n");
}

omu_PrimArray::~omu_PrimArray() { omu_TracePrimArray("omu_PrimArray() destructor\n"); }

omu_PrimArray& omu_PrimArray::operator=(const omu_PrimArray& other) {
    omu_TracePrimArray("omu_PrimArray=() #%03d %s -> ##%03d\n", SerialNumber(),
                       typeCode2string(other.elementType), other.SerialNumber());
    numDims = other.numDims;
    extents = other.extents;
    strides = other.strides;
    data = other.data;
    elementType = other.elementType;
    pyType = other.pyType;
    numElements = other.numElements;
    handedOut.clear();  // last, since `other` may be one of them
    return *this;
}

void omu_PrimArray::FromPointers(int numDimensions, const int* dimensions, DataTypeEnm type,
                                 const void* source) {
    if (!source) Fail("omu_PrimArray ctor failed - no data");
    if (ItemSize(type) == 0) Fail(kForeignType);
    RequireDimensionCount(numDimensions);
    if (!dimensions && numDimensions > 0) Fail("omu_PrimArray ctor failed");
    FromDimsAndData({dimensions, static_cast<std::size_t>(numDimensions)}, type, source);
}

void omu_PrimArray::FromDimsAndData(std::span<const int> dimensions, DataTypeEnm type,
                                    const void* source) {
    const std::vector<int> newStrides = StridesOf(dimensions, ItemSize(type));
    const int bytes = BytesOf(dimensions, newStrides);
    try {
        numDims = static_cast<int>(dimensions.size());
        extents.SetFromArray(dimensions.data(), numDims);
        strides.SetFromArray(newStrides.data(), numDims);
        data = new omu_PrimArrayData(bytes);
    } catch (const std::bad_alloc&) {
        Fail(kCannotAllocate);
    }
    elementType = type;
    numElements = bytes / ItemSize(type);
    SetPyType(type, 'i');
    if (source && bytes > 0) {
        std::memcpy(data.GetPtr()->Get(), source, static_cast<std::size_t>(bytes));
    }
}

void omu_PrimArray::FromSequence(const omu_PrimSequence& sequence) {
    omu_SequenceShape shape;
    const cow_String fault = getDimensionsFromSequence(sequence, shape);
    if (!fault.IsEmpty()) Fail("omu_PrimArray from sequence failed - dimensions. " + fault);
    constexpr char failed[] = "omu_PrimArray from sequence failed - DimsAndData";
    if (!shape.hasNumbers) Fail(failed);
    try {
        FromDimsAndData(shape.extents, shape.type, nullptr);
    } catch (const omu_ValueErrorException&) {
        Fail(failed);
    }
    char* target = data.GetPtr()->Get();
    if (!copyValues(sequence, elementType, target)) {
        Fail("omu_PrimArray from sequence failed - copyValues");
    }
}

int omu_PrimArray::ConstGetDimension(int d) const noexcept {
    return d >= 0 && d < numDims ? extents.UncheckedConstGet(d) : 0;
}

const char* omu_PrimArray::ConstGetData() const noexcept {
    return data.HasValue() ? data->ConstGet() : nullptr;
}

int omu_PrimArray::SerialNumber() const noexcept {
    return data.HasValue() ? data->SerialNumber() : 0;
}

int omu_PrimArray::ItemSize(DataTypeEnm type) noexcept {
    switch (type) {
        case omu_PrimNumber::INT:
        case omu_PrimNumber::FLOAT:
            return 4;
        case omu_PrimNumber::DOUBLE:
            return 8;
        case omu_PrimNumber::SCHAR:
        case omu_PrimNumber::SHORT:
        case omu_PrimNumber::UINT:
            break;
    }
    return 0;
}

const char* omu_PrimArray::typeCode2string(DataTypeEnm type) noexcept {
    switch (type) {
        case omu_PrimNumber::INT:
            return "omu_PrimNumber::INT";
        case omu_PrimNumber::FLOAT:
            return "omu_PrimNumber::FLOAT";
        case omu_PrimNumber::DOUBLE:
            return "omu_PrimNumber::DOUBLE";
        case omu_PrimNumber::SCHAR:
        case omu_PrimNumber::SHORT:
        case omu_PrimNumber::UINT:
            break;
    }
    return "";
}

void omu_PrimArray::SetPyType(DataTypeEnm type, int codeOfOthers) {
    int code = codeOfOthers;
    if (type == omu_PrimNumber::INT) code = 'i';
    if (type == omu_PrimNumber::FLOAT) code = 'f';
    if (type == omu_PrimNumber::DOUBLE) code = 'd';
    ShowCode(code, type);
}

void omu_PrimArray::SetPyType(int code) { ShowCode(code, elementType); }

void omu_PrimArray::ShowCode(int code, DataTypeEnm type) {
    handedOut.clear();
    pyType = static_cast<char>(code);
    omu_TracePrimArray("omu_PrimArray::SetPyType(%s) -> pyType:'%c'\n", typeCode2string(type),
                       pyType);
}

void omu_PrimArray::checkArrayIndices(std::span<const int> indices) const {
    const int positions = static_cast<int>(indices.size());
    for (int d = 0; d < positions; ++d) {
        const int index = indices[static_cast<std::size_t>(d)];
        if (d >= numDims) {
            if (index == -1) continue;
            Fail(atr("more indices given than size of array (%d>%d)", d + 1, numDims));
        }
        if (index == -1) {
            Fail(atr("less indices given than size of array (%d<%d)", d, numDims));
        }
        const int extent = extents.UncheckedConstGet(d);
        if (index < 0 || index >= extent) {
            Fail(atr("index out of range, dimension %d (%d >= %d)", d, index, extent));
        }
    }
    if (numDims > positions) {
        Fail(atr("less indices given than size of array (%d<%d)", positions, numDims));
    }
}

const char* omu_PrimArray::ItemAddress(int i, int j, int k, int l) const {
    const std::array indices = {i, j, k, l};
    checkArrayIndices(indices);
    if (numElements == 0) Fail(kNoItem);
    const char* address = ConstGetData();
    for (int d = 0; d < numDims; ++d) {
        address +=
            std::ptrdiff_t{indices[static_cast<std::size_t>(d)]} * strides.UncheckedConstGet(d);
    }
    return address;
}

omu_PrimNumber omu_PrimArray::ConstGetItem(int i, int j, int k, int l) const {
    return getPrimNumberAtPtr(ItemAddress(i, j, k, l), elementType);
}

double omu_PrimArray::ConstGetDouble(int i, int j, int k, int l) const {
    return Load(ItemAddress(i, j, k, l), elementType);
}

int omu_PrimArray::ConstGetInt(int i, int j, int k, int l) const {
    return omu_PrimNumber::ToInt(ConstGetDouble(i, j, k, l));
}

void omu_PrimArray::SetItem(const omu_PrimNumber& item, int i, int j, int k, int l) {
    const std::ptrdiff_t offset = ItemAddress(i, j, k, l) - ConstGetData();
    const double number = item.AsDouble();  // before objects that were handed out are dropped
    Store(OwnData() + offset, elementType, number);
}

char* omu_PrimArray::OwnData() {
    handedOut.clear();
    if (!data.Exclusive()) {
        try {
            auto own = std::make_unique<omu_PrimArrayData>(data->Size());
            std::memcpy(own->Get(), data->ConstGet(), static_cast<std::size_t>(data->Size()));
            data = own.release();
        } catch (const std::bad_alloc&) {
            Fail(kCannotAllocate);
        }
    }
    return data.GetPtr()->Get();
}

cow_String omu_PrimArray::TypeString() const { return "omu_PrimArray"; }

cow_String omu_PrimArray::AsString(int) const {
    RequireTextFits(extents);
    std::string text = "array(";
    const char* element = ConstGetData();
    if (numDims > 0) {
        AppendText(text, 0, element);
    } else {
        text += "[]";
    }
    text += atr(", '%c')", pyType).View();
    return cow_String(text);
}

void omu_PrimArray::AppendText(std::string& text, int dimension, const char*& element) const {
    text += '[';
    for (int i = 0; i < extents.UncheckedConstGet(dimension); ++i) {
        if (i > 0) text += ", ";
        if (dimension + 1 < numDims) {
            AppendText(text, dimension + 1, element);
        } else {
            AppendNumber(text, element, elementType);
            element += ConstGetItemSize();
        }
        if (static_cast<std::int64_t>(text.size()) > kMaxBytes) {
            throw std::length_error("text of an array");
        }
    }
    text += ']';
}

int omu_PrimArray::FirstDifference(const omu_PrimArray& other) const noexcept {
    const char* const a = ConstGetData();
    const char* const b = other.ConstGetData();
    if (elementType == omu_PrimNumber::INT) return FirstDifferenceOf<int>(a, b, numElements);
    if (elementType == omu_PrimNumber::FLOAT) return FirstDifferenceOf<float>(a, b, numElements);
    return FirstDifferenceOf<double>(a, b, numElements);
}

bool omu_PrimArray::operator==(const omu_Primitive& other) const {
    const auto* const array = dynamic_cast<const omu_PrimArray*>(&other);
    if (!array) {
        std::fputs("PrimArray. different types\n", stdout);
        return false;
    }
    if (numDims != array->numDims) {
        Log("PrimArray. different numDims\n");
        return false;
    }
    if (extents != array->extents) {
        Log("PrimArray. different dim\n");
        return false;
    }
    if (elementType != array->elementType) {
        Log("PrimArray. different typeCode\n");
        return false;
    }
    const int difference = FirstDifference(*array);
    if (difference == numElements) return true;
    const int row = difference / (numElements / Length());
    if (typ_DebugFlags::Level(kDebugFlag) >= kLogLevel) {
        Log("PrimArray. different Index(%3$d). %1$s != %2$s\n", ElementAt(row)->AsString(0),
            array->ElementAt(row)->AsString(0), row);
    }
    return false;
}

void omu_PrimArray::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimArray* omu_PrimArray::Copy() const { return new omu_PrimArray(*this); }

std::uint32_t omu_PrimArray::TypeId() const { return kTypeId; }

omu_PrimNesting omu_PrimArray::Nesting() const noexcept {
    constexpr int elementsOfNode = 16;
    omu_PrimNesting nesting;
    nesting.depth = std::max(numDims, 1);
    std::int64_t inner = 1;
    for (int d = 0; d + 1 < numDims; ++d) {
        inner = std::min(inner * extents.UncheckedConstGet(d), omu_PrimNesting::kMaxNodes);
        nesting.nodes += inner;
    }
    nesting.nodes += numElements / elementsOfNode;
    return nesting;
}
