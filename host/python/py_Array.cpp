#include "host/python/py_Array.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "host/python/py_Call.h"
#include "host/python/py_Object.h"
#include "host/python/py_Reference.h"
#include "omu/omu_PrimArray.h"
#include "omu/omu_PrimList.h"
#include "omu/omu_PyObjectWrapper.h"
#include "omu/omu_TypeErrorException.h"

namespace {

using DataType = omu_PrimArray::DataTypeEnm;
using NewPrimitive = std::unique_ptr<omu_Primitive>;

constexpr const char* kTooLarge =
    "integer beyond the elements of an array: only -2147483648 to 2147483647 fit";
constexpr const char* kTooLong = "an extent beyond 2147483647";
constexpr const char* kNoIndex = "array index out of range";
constexpr const char* kTooManyIndices = "more indices than the array has dimensions";
constexpr const char* kNoSteps = "arrays are cut in steps of 1";
constexpr const char* kReadOnly = "arrays export their elements for reading, row by row";

const cow_String kValues = "values";
const cow_String kValue = "value";
const std::array<cow_String, 4> kIndices = {"i", "j", "k", "l"};

/// A buffer of another object, released when this goes.
class Buffer {
  public:
    explicit Buffer(PyObject* exporter) {
        if (PyObject_GetBuffer(exporter, &view, PyBUF_RECORDS_RO) < 0) throw py_PythonError();
    }
    ~Buffer() { PyBuffer_Release(&view); }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;

    [[nodiscard]] const Py_buffer& View() const noexcept { return view; }
    [[nodiscard]] std::vector<int> Extents() const {
        std::vector<int> extents;
        for (int d = 0; d < view.ndim; ++d) {
            if (view.shape[d] > std::numeric_limits<int>::max()) {
                py_Raise(PyExc_OverflowError, kTooLong);
            }
            extents.push_back(static_cast<int>(view.shape[d]));
        }
        return extents;
    }

  private:
    Py_buffer view{};
};

/// What the elements of a buffer are, by the characters of Python's `struct`.
struct ElementFormat {
    enum class Kind { Signed, Unsigned, Floating, Boolean, Complex, Text, Object, Other };

    explicit ElementFormat(const char* format) {
        std::string_view text = format ? format : "B";
        if (!text.empty() && std::string_view("@=<>!").find(text[0]) != text.npos) {
            isSwapped = text[0] == '>' || text[0] == '!'
                            ? std::endian::native == std::endian::little
                            : text[0] == '<' && std::endian::native == std::endian::big;
            text.remove_prefix(1);
        }
        kind = KindOf(text);
    }

    Kind kind = Kind::Other;
    bool isSwapped = false;

  private:
    static bool IsIn(char code, std::string_view codes) { return codes.find(code) != codes.npos; }
    static Kind KindOf(std::string_view text) {
        if (text.size() == 2 && text[0] == 'Z') return Kind::Complex;
        const std::size_t count = std::min(text.find_first_not_of("0123456789"), text.size());
        text.remove_prefix(count);
        if (text.size() != 1) return Kind::Other;
        if (IsIn(text[0], "uw")) return Kind::Text;
        if (IsIn(text[0], "cspO")) return Kind::Object;
        if (count > 0) return Kind::Other;
        if (IsIn(text[0], "bhilqn")) return Kind::Signed;
        if (IsIn(text[0], "BHILQN")) return Kind::Unsigned;
        if (IsIn(text[0], "efd")) return Kind::Floating;
        return text[0] == '?' ? Kind::Boolean : Kind::Other;
    }
};

template <class T>
T Load(const char* address, bool isSwapped) {
    std::array<char, sizeof(T)> bytes;
    std::memcpy(bytes.data(), address, sizeof(T));
    if (isSwapped) std::reverse(bytes.begin(), bytes.end());
    return std::bit_cast<T>(bytes);
}

/// A half-precision number as it lies in storage.
struct Half {
    std::uint16_t bits;
};

float FloatOf(Half half) {
    const std::array<char, 2> bytes = std::bit_cast<std::array<char, 2>>(half.bits);
    constexpr int littleEndian = std::endian::native == std::endian::little;
    return static_cast<float>(PyFloat_Unpack2(bytes.data(), littleEndian));
}
float FloatOf(float number) { return number; }
double FloatOf(double number) { return number; }

template <class Stored>
int IntOf(Stored number) {
    if (!std::in_range<int>(number)) py_Raise(PyExc_OverflowError, kTooLarge);
    return static_cast<int>(number);
}

/// Converts the elements of a buffer one after the other, row by row.
template <class Stored, auto convert>
class Walk {
  public:
    using Number = decltype(convert(Stored{}));

    Walk(const Py_buffer& source, bool swapped) : view(source), isSwapped(swapped) {}
    [[nodiscard]] std::vector<Number> Numbers() {
        if (view.len > 0) numbers.reserve(static_cast<std::size_t>(view.len / view.itemsize));
        Visit(0, static_cast<const char*>(view.buf));
        return std::move(numbers);
    }

  private:
    void Visit(int dimension, const char* address) {
        if (dimension == view.ndim) {
            numbers.push_back(convert(Load<Stored>(address, isSwapped)));
            return;
        }
        for (Py_ssize_t i = 0; i < view.shape[dimension]; ++i) {
            Visit(dimension + 1, address + i * view.strides[dimension]);
        }
    }

    const Py_buffer& view;
    bool isSwapped;
    std::vector<Number> numbers;
};

constexpr char kNoElements = 0;  ///< what an empty array points to, which must not be null

template <class Stored, auto convert>
NewPrimitive ConvertEach(const Buffer& buffer, bool isSwapped) {
    const std::vector<int> extents = buffer.Extents();
    const int dimensions = buffer.View().ndim;
    using Number = typename Walk<Stored, convert>::Number;
    constexpr DataType type = std::is_same_v<Number, int>     ? omu_PrimNumber::INT
                              : std::is_same_v<Number, float> ? omu_PrimNumber::FLOAT
                                                              : omu_PrimNumber::DOUBLE;
    const Py_ssize_t count = buffer.View().len / buffer.View().itemsize;
    if (count > std::numeric_limits<int>::max() / static_cast<Py_ssize_t>(sizeof(Number))) {
        // Refused for its size, before anything is read.
        return std::make_unique<omu_PrimArray>(dimensions, extents.data(), type, &kNoElements);
    }
    const std::vector<Number> numbers = Walk<Stored, convert>(buffer.View(), isSwapped).Numbers();
    const void* const data = numbers.empty() ? static_cast<const void*>(&kNoElements)
                                             : static_cast<const void*>(numbers.data());
    return std::make_unique<omu_PrimArray>(dimensions, extents.data(), type, data);
}

NewPrimitive CopyBlock(const Buffer& buffer, DataType type) {
    const Py_buffer& view = buffer.View();
    return std::make_unique<omu_PrimArray>(view.ndim, buffer.Extents().data(), type,
                                           view.len > 0 ? view.buf : &kNoElements);
}

NewPrimitive FromSigned(const Buffer& buffer, bool isSwapped) {
    switch (buffer.View().itemsize) {
        case 1:
            return ConvertEach<std::int8_t, &IntOf<std::int8_t>>(buffer, isSwapped);
        case 2:
            return ConvertEach<std::int16_t, &IntOf<std::int16_t>>(buffer, isSwapped);
        case 4:
            return ConvertEach<std::int32_t, &IntOf<std::int32_t>>(buffer, isSwapped);
        default:
            return ConvertEach<std::int64_t, &IntOf<std::int64_t>>(buffer, isSwapped);
    }
}

NewPrimitive FromUnsigned(const Buffer& buffer, bool isSwapped) {
    switch (buffer.View().itemsize) {
        case 1:
            return ConvertEach<std::uint8_t, &IntOf<std::uint8_t>>(buffer, isSwapped);
        case 2:
            return ConvertEach<std::uint16_t, &IntOf<std::uint16_t>>(buffer, isSwapped);
        case 4:
            return ConvertEach<std::uint32_t, &IntOf<std::uint32_t>>(buffer, isSwapped);
        default:
            return ConvertEach<std::uint64_t, &IntOf<std::uint64_t>>(buffer, isSwapped);
    }
}

template <class Stored>
constexpr auto kFloatOf = static_cast<decltype(FloatOf(Stored{})) (*)(Stored)>(&FloatOf);

NewPrimitive FromFloating(const Buffer& buffer, bool isSwapped) {
    switch (buffer.View().itemsize) {
        case 2:
            return ConvertEach<Half, kFloatOf<Half>>(buffer, isSwapped);
        case 4:
            return ConvertEach<float, kFloatOf<float>>(buffer, isSwapped);
        default:
            return ConvertEach<double, kFloatOf<double>>(buffer, isSwapped);
    }
}

/// The type of the elements when the library has it as it lies in the buffer.
bool IsBlock(const Buffer& buffer, const ElementFormat& format, DataType& type) {
    const Py_buffer& view = buffer.View();
    const bool isFloat = format.kind == ElementFormat::Kind::Floating;
    const bool isInt = format.kind == ElementFormat::Kind::Signed && view.itemsize == 4;
    if (format.isSwapped || !(isInt || (isFloat && view.itemsize >= 4))) return false;
    type = isInt                ? omu_PrimNumber::INT
           : view.itemsize == 4 ? omu_PrimNumber::FLOAT
                                : omu_PrimNumber::DOUBLE;
    return PyBuffer_IsContiguous(&view, 'C') == 1;
}

NewPrimitive FromNestedList(PyObject* exporter) {
    const py_Reference lister(PyObject_HasAttrString(exporter, "tolist")
                                  ? Py_NewRef(exporter)
                                  : PyMemoryView_FromObject(exporter));
    const py_Reference list(PyObject_CallMethod(lister.Get(), "tolist", nullptr));
    return py_Converter().Convert(list.Get());
}

/// Objects and bytes are objects to the library, whatever they are to Python.
NewPrimitive FromObjects(PyObject* exporter) {
    auto list = std::make_unique<omu_PrimList>();
    list->Append(new omu_PyObjectWrapper(exporter));
    return list;
}

const omu_PrimArray& ArrayOf(PyObject* object) {
    return static_cast<const omu_PrimArray&>(py_PrimitiveOf(object));
}
omu_PrimArray& ArrayToChange(PyObject* object) {
    return static_cast<omu_PrimArray&>(py_PrimitiveOf(object));
}

py_Result New(omu_Arguments& arguments) {
    omu_PrimArray array;
    omu_PrimTuple sequence;
    arguments.Get(array, kValues);
    const bool isArray = !(arguments.ErrorOnPrevious() && arguments.Alternative());
    if (!isArray) arguments.Get(sequence, kValues);
    if (arguments.Error()) return {};
    if (isArray) return std::make_unique<omu_PrimArray>(array);
    if (sequence.Length() > 0) return std::make_unique<omu_PrimArray>(sequence);
    constexpr int noExtent = 0;
    return std::make_unique<omu_PrimArray>(1, &noExtent, omu_PrimNumber::DOUBLE, &kNoElements);
}

std::array<int, 4> GivenIndices(omu_Arguments& arguments) {
    std::array<int, 4> indices = {-1, -1, -1, -1};
    for (std::size_t d = 0; d < indices.size(); ++d) {
        if (d == 1) arguments.Optional();
        arguments.Get(indices[d], kIndices[d]);
    }
    arguments.End();
    return indices;
}

py_Result Item(const omu_PrimArray& self, omu_Arguments& arguments) {
    const auto [i, j, k, l] = GivenIndices(arguments);
    return std::make_unique<omu_PrimNumber>(self.ConstGetItem(i, j, k, l));
}

const omu_PrimNumber& RequireNumber(const omu_Primitive& value) {
    const bool isNumber = value.IsType(omu_PrimTag::kInt) || value.IsType(omu_PrimTag::kFloat);
    if (!isNumber) KTSBasThrow(omu_GenericTypeErrorException());
    return static_cast<const omu_PrimNumber&>(value);
}

py_Result SetItem(omu_PrimArray& self, omu_Arguments& arguments) {
    double value = 0;
    arguments.Get(value, kValue);
    const auto [i, j, k, l] = GivenIndices(arguments);
    self.SetItem(omu_PrimNumber(value), i, j, k, l);
    return {};
}

/// Index `object` into an extent: from the end when it is negative, as Python counts.
int RequireIndex(PyObject* object, int extent) {
    Py_ssize_t index = PyNumber_AsSsize_t(object, PyExc_IndexError);
    if (index == -1 && PyErr_Occurred()) throw py_PythonError();
    if (index < 0) index += extent;
    if (index < 0 || index >= extent) py_Raise(PyExc_IndexError, kNoIndex);
    return static_cast<int>(index);
}

/// The indices of `array[key]`, checked against its extents.
std::vector<int> RequireIndices(const omu_PrimArray& array, PyObject* key) {
    const bool isTuple = PyTuple_Check(key);
    const Py_ssize_t count = isTuple ? PyTuple_GET_SIZE(key) : 1;
    if (count > array.ConstGetArraySize()) py_Raise(PyExc_IndexError, kTooManyIndices);
    std::vector<int> indices;
    for (int d = 0; d < count; ++d) {
        indices.push_back(
            RequireIndex(isTuple ? PyTuple_GET_ITEM(key, d) : key, array.ConstGetDimension(d)));
    }
    return indices;
}

/// The number at the indices, or the array of the dimensions that are left.
NewPrimitive ElementAt(const omu_PrimArray& array, const std::vector<int>& indices) {
    const int given = static_cast<int>(indices.size());
    const char* address = array.ConstGetNumElements() > 0 ? array.ConstGetData() : &kNoElements;
    std::vector<int> left;
    for (int d = 0; d < array.ConstGetArraySize(); ++d) {
        if (d >= given) {
            left.push_back(array.ConstGetDimension(d));
        } else if (array.ConstGetNumElements() > 0) {
            address += static_cast<std::ptrdiff_t>(indices[static_cast<std::size_t>(d)]) *
                       array.ConstGetStrides()[d];
        }
    }
    const DataType type = array.ConstGetPrimNumberType();
    if (left.empty()) return std::make_unique<omu_PrimNumber>(getPrimNumberAtPtr(address, type));
    return std::make_unique<omu_PrimArray>(static_cast<int>(left.size()), left.data(), type,
                                           address);
}

NewPrimitive Cut(const omu_PrimArray& array, PyObject* slice) {
    Py_ssize_t first = 0;
    Py_ssize_t last = 0;
    Py_ssize_t step = 0;
    if (PySlice_Unpack(slice, &first, &last, &step) < 0) throw py_PythonError();
    if (step != 1) py_Raise(PyExc_ValueError, kNoSteps);
    PySlice_AdjustIndices(array.Length(), &first, &last, step);
    return NewPrimitive(array.Slice(static_cast<int>(first), static_cast<int>(last)));
}

Py_ssize_t Length(PyObject* self) { return ArrayOf(self).Length(); }

PyObject* GetItem(PyObject* self, PyObject* key) {
    try {
        const omu_PrimArray& array = ArrayOf(self);
        return py_FromPrimitive(PySlice_Check(key) ? Cut(array, key)
                                                   : ElementAt(array, RequireIndices(array, key)));
    } catch (...) {
        py_SetError();
        return nullptr;
    }
}

/// The element of the first dimension, for loops.
PyObject* Element(PyObject* self, Py_ssize_t index) {
    try {
        const omu_PrimArray& array = ArrayOf(self);
        if (index < 0 || index >= array.Length()) py_Raise(PyExc_IndexError, kNoIndex);
        return py_FromPrimitive(ElementAt(array, {static_cast<int>(index)}));
    } catch (...) {
        py_SetError();
        return nullptr;
    }
}

int PutItem(PyObject* self, PyObject* key, PyObject* value) {
    try {
        if (!value) py_Raise(PyExc_TypeError, "elements of an array cannot be deleted");
        std::vector<int> indices = RequireIndices(ArrayOf(self), key);
        indices.resize(std::max<std::size_t>(indices.size(), 4), -1);
        const NewPrimitive number = py_Converter().Convert(value);
        ArrayToChange(self).SetItem(RequireNumber(*number), indices[0], indices[1], indices[2],
                                    indices[3]);
        return 0;
    } catch (...) {
        py_SetError();
        return -1;
    }
}

PyObject* Shape(PyObject* self, void*) {
    try {
        const omu_PrimArray& array = ArrayOf(self);
        return py_FromPrimitive(py_Return(array.ConstGetExtents()));
    } catch (...) {
        py_SetError();
        return nullptr;
    }
}

PyObject* TypeCode(PyObject* self, void*) {
    const char code = ArrayOf(self).ConstGetPyType();
    return PyUnicode_FromStringAndSize(&code, 1);
}

PyObject* AsNestedList(PyObject* self, PyObject*) {
    const auto list = [](const auto& again, const omu_PrimArray& array) -> PyObject* {
        py_Reference rows(PyList_New(array.Length()));
        for (int i = 0; i < array.Length(); ++i) {
            const NewPrimitive element = ElementAt(array, {i});
            const auto* const row = dynamic_cast<const omu_PrimArray*>(element.get());
            PyList_SET_ITEM(rows.Get(), i, row ? again(again, *row) : py_FromPrimitive(*element));
        }
        return rows.Release();
    };
    try {
        return list(list, ArrayOf(self));
    } catch (...) {
        py_SetError();
        return nullptr;
    }
}

/// What an exported buffer refers to. It shares the block of the array, which makes itself another
/// one when it is changed.
struct Export {
    explicit Export(const omu_PrimArray& exported) : array(exported) {
        for (int d = 0; d < array.ConstGetArraySize(); ++d) {
            extents.push_back(array.ConstGetDimension(d));
            strides.push_back(array.ConstGetStrides()[d]);
        }
        if (!extents.empty()) return;
        extents.push_back(0);  // without dimensions there are no elements; Python has one then
        strides.push_back(array.ConstGetItemSize());
    }

    omu_PrimArray array;
    std::vector<Py_ssize_t> extents;
    std::vector<Py_ssize_t> strides;
};

char* FormatOf(DataType type) {
    static char formats[][2] = {"i", "f", "d"};
    return formats[type == omu_PrimNumber::INT ? 0 : type == omu_PrimNumber::FLOAT ? 1 : 2];
}

int GetBuffer(PyObject* self, Py_buffer* view, int flags) {
    view->obj = nullptr;
    try {
        auto exported = std::make_unique<Export>(ArrayOf(self));
        const bool wantsColumns = (flags & PyBUF_F_CONTIGUOUS) == PyBUF_F_CONTIGUOUS;
        const std::size_t dimensions = exported->extents.size();
        const bool isRefused = (flags & PyBUF_WRITABLE) != 0 || dimensions > PyBUF_MAX_NDIM ||
                               (wantsColumns && dimensions > 1);
        if (isRefused) py_Raise(PyExc_BufferError, kReadOnly);
        const omu_PrimArray& array = exported->array;
        const bool isEmpty = array.ConstGetNumElements() == 0;
        view->buf = const_cast<char*>(isEmpty ? &kNoElements : array.ConstGetData());
        view->itemsize = array.ConstGetItemSize();
        view->len = array.ConstGetNumElements() * view->itemsize;
        view->readonly = 1;
        view->ndim = static_cast<int>(dimensions);
        view->format =
            (flags & PyBUF_FORMAT) != 0 ? FormatOf(array.ConstGetPrimNumberType()) : nullptr;
        view->shape = (flags & PyBUF_ND) != 0 ? exported->extents.data() : nullptr;
        view->strides =
            (flags & PyBUF_STRIDES) == PyBUF_STRIDES ? exported->strides.data() : nullptr;
        view->suboffsets = nullptr;
        view->internal = exported.release();
        view->obj = Py_NewRef(self);
        return 0;
    } catch (...) {
        py_SetError();
        return -1;
    }
}

void ReleaseBuffer(PyObject*, Py_buffer* view) { delete static_cast<Export*>(view->internal); }

template <auto command>
PyObject* EnterMethod(PyObject* self, PyObject* const* values, Py_ssize_t positional,
                      PyObject* keywords) {
    return py_Call(py_CallValues{values, positional, keywords}, [self](omu_Arguments& arguments) {
        return command(ArrayToChange(self), arguments);
    });
}

template <auto command>
PyMethodDef Method(const char* name, const char* doc) {
    return py_detail::MethodDef(name, &EnterMethod<command>, doc);
}

PyMethodDef kMethods[] = {
    Method<&Item>("item",
                  "item($self, i, j=-1, k=-1, l=-1)\n--\n\n"
                  "Returns the number at up to four indices, as many as there are "
                  "dimensions; -1 is none."),
    Method<&SetItem>("setItem",
                     "setItem($self, value, i, j=-1, k=-1, l=-1)\n--\n\n"
                     "Writes a number at up to four indices. An array of ints takes it "
                     "truncated."),
    {"tolist", &AsNestedList, METH_NOARGS,
     "tolist($self)\n--\n\nReturns the numbers as nested lists."},
    {},
};

PyGetSetDef kAttributes[] = {
    {"shape", &Shape, nullptr, "the extents of the dimensions", nullptr},
    {"typeCode", &TypeCode, nullptr,
     "'i' for 32-bit integers, 'f' for single, 'd' for double "
     "precision",
     nullptr},
    {},
};

PyType_Slot slots[] = {
    {Py_tp_doc,
     const_cast<char*>(
         "A dense array of numbers of one type; ktsovu.array makes one.\n\n"
         "array[i] is a number or the array of one dimension less, array[i, j] goes deeper, "
         "array[i:j] cuts\nalong the first dimension. numpy.asarray(array) reads the numbers "
         "without copying them.")},
    {Py_tp_methods, kMethods},
    {Py_tp_getset, kAttributes},
    {Py_sq_length, reinterpret_cast<void*>(&Length)},
    {Py_sq_item, reinterpret_cast<void*>(&Element)},
    {Py_mp_length, reinterpret_cast<void*>(&Length)},
    {Py_mp_subscript, reinterpret_cast<void*>(&GetItem)},
    {Py_mp_ass_subscript, reinterpret_cast<void*>(&PutItem)},
    {Py_bf_getbuffer, reinterpret_cast<void*>(&GetBuffer)},
    {Py_bf_releasebuffer, reinterpret_cast<void*>(&ReleaseBuffer)},
    {},
};

PyMethodDef kFunctions[] = {
    py_Function<&New>("array",
                      "array($module, values)\n--\n\n"
                      "Returns the array of nested sequences of numbers, or of a buffer "
                      "such as a numpy array.\n\nAll rows must be of one length. Integers "
                      "make an array of ints, any floating number one of\ndoubles; "
                      "buffers keep single precision."),
    {},
};

}  // namespace

py_BufferKind py_KindOfBuffer(PyObject* exporter) {
    const Buffer buffer(exporter);
    if (buffer.View().ndim > 0) return py_BufferKind::Array;
    switch (ElementFormat(buffer.View().format).kind) {
        case ElementFormat::Kind::Floating:
            return py_BufferKind::Floating;
        case ElementFormat::Kind::Boolean:
            return py_BufferKind::Boolean;
        case ElementFormat::Kind::Complex:
            return py_BufferKind::Complex;
        default:
            return py_BufferKind::Other;
    }
}

NewPrimitive py_FromBuffer(PyObject* exporter) {
    const Buffer buffer(exporter);
    const ElementFormat format(buffer.View().format);
    DataType type = omu_PrimNumber::INT;
    if (IsBlock(buffer, format, type)) return CopyBlock(buffer, type);
    switch (format.kind) {
        case ElementFormat::Kind::Signed:
            return FromSigned(buffer, format.isSwapped);
        case ElementFormat::Kind::Unsigned:
            return FromUnsigned(buffer, format.isSwapped);
        case ElementFormat::Kind::Floating:
            return FromFloating(buffer, format.isSwapped);
        case ElementFormat::Kind::Boolean:
        case ElementFormat::Kind::Complex:
        case ElementFormat::Kind::Text:
            return FromNestedList(exporter);
        case ElementFormat::Kind::Object:
            return FromObjects(exporter);
        case ElementFormat::Kind::Other:
            break;
    }
    // A type that no array has: the library says so.
    return std::make_unique<omu_PrimArray>(buffer.View().ndim, buffer.Extents().data(),
                                           omu_PrimNumber::SCHAR, &kNoElements);
}

void py_AddArray(PyObject* module) {
    py_arrayType = py_AddClass(module, "Array", slots);
    if (PyModule_AddFunctions(module, kFunctions) < 0) throw py_PythonError();
}
