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
#include "omu/detail/omu_SequenceShape.h"
#include "omu/detail/omu_TracePrimArray.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

namespace {

constexpr cls_FieldHandle kDataType("_dataType");
constexpr cls_FieldHandle kPyType("_pyType");
constexpr cls_FieldHandle kDims("_dims");

using DataTypeEnm = omu_PrimNumber::DataTypeEnm;

constexpr char kNegativeDimensions[] = "PrimArray negative dimensions are not allowed";
constexpr char kCannotAllocate[] = "PrimArray can't allocate memory for array (data)";
constexpr char kForeignType[] = "PrimArray only INT, FLOAT, DOUBLE allowed";
constexpr char kNoItem[] = "PrimArray ConstGetNumericItem failed";

/// The flag of arrays among the foundation's debug flags, and the level that logs it.
constexpr int kDebugFlag = 19;
constexpr int kLogLevel = 2;

constexpr std::int64_t kMaxBytes = std::numeric_limits<std::int32_t>::max();

[[noreturn]] void Fail(const cow_String& text, const char* file = __builtin_FILE(),
                       int line = __builtin_LINE()) {
    KTSBasThrow(omu_ValueErrorException(text), file, line);
}

void RequireDimensionCount(int numDimensions) {
    if (numDimensions < 0) Fail(kNegativeDimensions);
    if (numDimensions > omu_PrimArray::kMaxDimensions) Fail(kCannotAllocate);
}

/// The bytes from one index to the next of each dimension, then those of the whole: all products of
/// the extents from the last one on. What no array can have is refused.
std::vector<int> StridesOf(std::span<const int> dimensions, int itemSize) {
    RequireDimensionCount(static_cast<int>(dimensions.size()));
    if (std::ranges::any_of(dimensions, [](int extent) { return extent < 0; })) {
        Fail(kNegativeDimensions);
    }
    std::vector<int> products(dimensions.size() + 1, itemSize);
    std::int64_t bytes = itemSize;
    for (std::size_t d = dimensions.size(); d-- > 0;) {
        bytes *= dimensions[d];
        if (bytes > kMaxBytes) Fail(kCannotAllocate);
        products[d] = static_cast<int>(bytes);
    }
    std::rotate(products.begin(), products.begin() + 1, products.end());
    return products;
}

/// The bytes of the whole; without dimensions there are no elements.
int BytesOf(std::span<const int> dimensions, const std::vector<int>& stridesAndTotal) {
    return dimensions.empty() ? 0 : stridesAndTotal.back();
}

std::vector<int> ToVector(const cow_List<int>& list) { return {list.begin(), list.end()}; }

double Load(const char* address, DataTypeEnm type) {
    return getPrimNumberAtPtr(address, type).AsDouble();
}

template <class T>
void StoreAs(char* address, T element) {
    std::memcpy(address, &element, sizeof element);
}

/// Writes `number` as an element of `type`: truncated and saturated, or rounded.
void Store(char* address, DataTypeEnm type, double number) {
    if (type == omu_PrimNumber::INT) {
        StoreAs(address, omu_PrimNumber::ToInt(number));
    } else if (type == omu_PrimNumber::FLOAT) {
        StoreAs(address, omu_PrimNumber::ToFloat(number));
    } else {
        StoreAs(address, number);
    }
}

/// Copies all elements of `source` to `target`, as elements of `type`; the address behind them.
char* CopyElements(const omu_PrimArray& source, DataTypeEnm type, char* target) {
    const int itemSize = omu_PrimArray::ItemSize(type);
    const char* element = source.ConstGetData();
    const int count = source.ConstGetNumElements();
    const std::ptrdiff_t bytes = std::ptrdiff_t{count} * itemSize;
    if (count > 0 && source.ConstGetPrimNumberType() == type) {
        std::memcpy(target, element, static_cast<std::size_t>(bytes));
        return target + bytes;
    }
    for (int i = 0; i < count; ++i) {
        Store(target, type, Load(element, source.ConstGetPrimNumberType()));
        element += source.ConstGetItemSize();
        target += itemSize;
    }
    return target;
}

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

/// The collection of elements of type `T` in records.
template <class T>
struct Stored;
template <>
struct Stored<int> {
    static constexpr DataTypeEnm kType = omu_PrimNumber::INT;
    static constexpr cls_FieldHandle kField{"_ints"};
};
template <>
struct Stored<float> {
    static constexpr DataTypeEnm kType = omu_PrimNumber::FLOAT;
    static constexpr cls_FieldHandle kField{"_floats"};
};
template <>
struct Stored<double> {
    static constexpr DataTypeEnm kType = omu_PrimNumber::DOUBLE;
    static constexpr cls_FieldHandle kField{"_doubles"};
};

template <class T>
cow_List<T> ReadList(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    const auto body = visitor.MakeReadObj(field);
    const auto reader = body ? body->MakeReadListPrim(T{}) : nullptr;
    return reader ? reader->ConstGetList() : cow_List<T>();
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
    handedOut.clear();
    numDims = other.numDims;
    extents = other.extents;
    strides = other.strides;
    data = other.data;
    elementType = other.elementType;
    pyType = other.pyType;
    numElements = other.numElements;
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
    pyType = static_cast<char>(code);
    omu_TracePrimArray("omu_PrimArray::SetPyType(%s) -> pyType:'%c'\n", typeCode2string(type),
                       pyType);
}

void omu_PrimArray::SetPyType(int code) {
    pyType = static_cast<char>(code);
    omu_TracePrimArray("omu_PrimArray::SetPyType(%s) -> pyType:'%c'\n",
                       typeCode2string(elementType), pyType);
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
    Store(OwnData() + offset, elementType, item.AsDouble());
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
            continue;
        }
        AppendNumber(text, element, elementType);
        element += ConstGetItemSize();
    }
    text += ']';
    if (static_cast<std::int64_t>(text.size()) > kMaxBytes) {
        throw std::length_error("text of an array");
    }
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

// The form must be that of the elements which are there, before anything is made of it.
template <class T>
void omu_PrimArray::ReadElements(cls_ReadVisitor& visitor, std::span<const int> dimensions) {
    const cow_List<T> elements = ReadList<T>(visitor, Stored<T>::kField);
    if (BytesOf(dimensions, StridesOf(dimensions, sizeof(T))) !=
        std::int64_t{elements.Length()} * std::int64_t{sizeof(T)}) {
        Fail(atr("%d elements do not fill the extents", elements.Length()));
    }
    FromDimsAndData(dimensions, Stored<T>::kType, nullptr);
    char* target = data.GetPtr()->Get();
    elements.ForEachSpan([&target](std::span<const T> part) {
        std::memcpy(target, part.data(), part.size_bytes());
        target += part.size_bytes();
    });
}

omu_PrimArray omu_PrimArray::FromRecord(cls_ReadVisitor& visitor) {
    const int type = visitor.ReadEnumAsInt(kDataType);
    omu_PrimArray array;
    char code = array.pyType;
    visitor.Read(kPyType, code);
    const std::vector<int> dimensions = ToVector(ReadList<int>(visitor, kDims));
    try {
        if (type == omu_PrimNumber::INT) {
            array.ReadElements<int>(visitor, dimensions);
        } else if (type == omu_PrimNumber::FLOAT) {
            array.ReadElements<float>(visitor, dimensions);
        } else if (type == omu_PrimNumber::DOUBLE) {
            array.ReadElements<double>(visitor, dimensions);
        } else {
            Fail(kForeignType);
        }
    } catch (const omu_ValueErrorException& refused) {
        const cow_String text = refused.JournalMessage(KTSBasStringMode::Untranslated);
        std::fprintf(stderr, "omu_PrimArray record refused: %s\n", text.Characters());
        return {};
    }
    array.pyType = code;
    return array;
}

omu_PrimArray::omu_PrimArray(cls_ReadVisitor& visitor) : omu_PrimArray(FromRecord(visitor)) {}

template <class T>
void omu_PrimArray::WriteElements(cls_WriteVisitor& visitor) const {
    const auto body = visitor.MakeWriteObj(Stored<T>::kField, 0, cls_Uid());
    const auto writer = body ? body->MakeWriteListPrim(T{}, 1) : nullptr;
    if (writer) writer->Write(reinterpret_cast<const T*>(ConstGetData()), numElements);
}

void omu_PrimArray::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.WriteEnumAsInt(kDataType, elementType);
    visitor.Write(kPyType, pyType);
    if (const auto body = visitor.MakeWriteObj(kDims, 0, cls_Uid())) {
        const auto writer = body->MakeWriteListPrim(int{}, 1);
        if (writer) writer->Write(extents);
    }
    if (elementType == omu_PrimNumber::INT) {
        WriteElements<int>(visitor);
    } else if (elementType == omu_PrimNumber::FLOAT) {
        WriteElements<float>(visitor);
    } else {
        WriteElements<double>(visitor);
    }
}

void omu_PrimArray::InitializeMetadata(cls_ClassRegistrar& registrar) {
    const auto list = [](cls_ClassMetadata& metadata, const cls_FieldHandle& field,
                         cls_CollectionType type) {
        metadata.AddAttribute(field.Name(), cls_KIND_COLLECTION, 0, type);
    };
    cls_ClassMetadata metadata =
        omu_MetadataOf<omu_PrimArray>("omu_PrimArray", omu_PrimSequence::kTypeId);
    metadata.AddAttribute(kDataType.Name(), cls_KIND_ENUM);
    metadata.AddAttribute(kPyType.Name(), cls_KIND_CHAR);
    list(metadata, kDims, cls_LIST_INT);
    list(metadata, Stored<int>::kField, cls_LIST_INT);
    list(metadata, Stored<float>::kField, cls_LIST_FLOAT);
    list(metadata, Stored<double>::kField, cls_LIST_DOUBLE);
    registrar.AddClass(metadata);
}
