#include "host/python/py_Convert.h"

#include <algorithm>
#include <limits>

#include "host/python/py_Array.h"
#include "host/python/py_Error.h"
#include "host/python/py_Object.h"
#include "host/python/py_Reference.h"
#include "host/python/py_Text.h"
#include "omu/omu_PrimBoolean.h"
#include "omu/omu_PrimComplex.h"
#include "omu/omu_PrimDictionary.h"
#include "omu/omu_PrimException.h"
#include "omu/omu_PrimList.h"
#include "omu/omu_PrimNone.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_PrimTuple.h"
#include "omu/omu_PyObjectWrapper.h"

namespace {

using NewPrimitive = std::unique_ptr<omu_Primitive>;

constexpr const char* kTooLarge = "integer beyond 32 bits: only -2147483648 to 4294967295 fit";
constexpr const char* kContainsItself = "a sequence or dictionary that contains itself";
constexpr const char* kMixedKeys = "the keys of a dictionary must be all strings or all integers";

/// `integer` as a 64-bit number; beyond these the largest one, which is refused anyway.
long long Wide(PyObject* integer) {
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(integer, &overflow);
    if (number == -1 && overflow == 0 && PyErr_Occurred()) throw py_PythonError();
    return overflow == 0 ? number : std::numeric_limits<long long>::max();
}

NewPrimitive FromInteger(PyObject* integer) {
    const long long number = Wide(integer);
    if (number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max()) {
        return std::make_unique<omu_PrimNumber>(static_cast<int>(number));
    }
    if (number < 0 || number > std::numeric_limits<unsigned>::max()) {
        py_Raise(PyExc_OverflowError, kTooLarge);
    }
    return std::make_unique<omu_PrimNumber>(static_cast<unsigned>(number));
}

NewPrimitive FromFloat(PyObject* number) {
    return std::make_unique<omu_PrimNumber>(PyFloat_AS_DOUBLE(number));
}

NewPrimitive FromComplex(PyObject* complex) {
    const Py_complex number = PyComplex_AsCComplex(complex);
    if (number.real == -1 && PyErr_Occurred()) throw py_PythonError();
    return std::make_unique<omu_PrimComplex>(omi_complex(number.real, number.imag));
}

bool HasFloat(PyObject* value) {
    const PyNumberMethods* const methods = Py_TYPE(value)->tp_as_number;
    return methods && methods->nb_float;
}

/// A value that is of no class of Python's own.
NewPrimitive FromForeign(PyObject* value) {
    if (PyObject_CheckBuffer(value)) {
        switch (py_KindOfBuffer(value)) {
            case py_BufferKind::Array:
                return py_FromBuffer(value);
            case py_BufferKind::Boolean:
                return std::make_unique<omu_PrimBoolean>(PyObject_IsTrue(value) == 1);
            case py_BufferKind::Complex:
                return FromComplex(value);
            case py_BufferKind::Floating:
                if (HasFloat(value)) return FromFloat(py_Reference(PyNumber_Float(value)).Get());
                break;
            case py_BufferKind::Other:
                break;
        }
    }
    if (PyIndex_Check(value)) return FromInteger(py_Reference(PyNumber_Index(value)).Get());
    if (HasFloat(value)) return FromFloat(py_Reference(PyNumber_Float(value)).Get());
    if (PyObject_HasAttrString(value, "__fspath__")) {
        const py_Reference path(PyOS_FSPath(value));
        if (PyUnicode_Check(path.Get())) {
            return std::make_unique<omu_PrimString>(py_ToText(path.Get()));
        }
    }
    return std::make_unique<omu_PyObjectWrapper>(value);
}

omu_PrimHandle HandleOf(NewPrimitive primitive) { return omu_PrimHandle(primitive.release()); }

PyObject* FromNumber(const omu_PrimNumber& number) {
    if (number.IsType(omu_PrimTag::kFloat)) return PyFloat_FromDouble(number.AsDouble());
    return PyLong_FromLongLong(static_cast<long long>(number.AsDouble()));
}

PyObject* FromComplex(const omu_PrimComplex& complex) {
    return PyComplex_FromDoubles(complex.Value().Real(), complex.Value().Imaginary());
}

template <auto newSequence, auto setItem>
PyObject* FromSequence(const omu_PrimTuple& elements) {
    py_Reference sequence(newSequence(elements.Length()));
    for (int i = 0; i < elements.Length(); ++i) {
        setItem(sequence.Get(), i, py_FromPrimitive(*elements.Index(i)));
    }
    return sequence.Release();
}

PyObject* FromKey(int key) { return PyLong_FromLong(key); }
PyObject* FromKey(const cow_String& key) { return py_FromText(key); }

template <class Key>
PyObject* FromEntries(const omu_PrimDictionary<Key>& entries) {
    py_Reference dictionary(PyDict_New());
    for (int i = 0; i < entries.Length(); ++i) {
        const py_Reference key(FromKey(entries.ConstGetKey(i)));
        const py_Reference value(py_FromPrimitive(entries.ConstGetValue(i)));
        if (PyDict_SetItem(dictionary.Get(), key.Get(), value.Get()) < 0) throw py_PythonError();
    }
    return dictionary.Release();
}

PyObject* FromDictionary(const omu_Primitive& primitive) {
    const auto* const byText = dynamic_cast<const omu_PrimStringDictionary*>(&primitive);
    if (byText) return FromEntries(*byText);
    return FromEntries(dynamic_cast<const omu_PrimIntDictionary&>(primitive));
}

PyObject* FromException(const omu_PrimException& exception) {
    const py_Reference message(py_FromText(exception.Message()));
    return PyObject_CallOneArg(py_ErrorClass(exception.PythonType()), message.Get());
}

PyObject* FromWrapper(const omu_PyObjectWrapper& wrapper) {
    PyObject* const object = static_cast<PyObject*>(wrapper.Object());
    return Py_NewRef(object ? object : Py_None);
}

template <class Kind>
const Kind& As(const omu_Primitive& primitive) {
    return static_cast<const Kind&>(primitive);
}

/// The Python value of a primitive that has a counterpart among Python's own classes; else null. A
/// tag tells the class.
PyObject* ToPlain(const omu_Primitive& primitive) {
    switch (primitive.Type()) {
        case omu_PrimTag::kInt:
        case omu_PrimTag::kFloat:
            return py_Require(FromNumber(As<omu_PrimNumber>(primitive)));
        case omu_PrimTag::kBoolean:
            return PyBool_FromLong(As<omu_PrimBoolean>(primitive).Value());
        case omu_PrimTag::kComplex:
            return py_Require(FromComplex(As<omu_PrimComplex>(primitive)));
        case omu_PrimTag::kString:
            return py_FromText(As<omu_PrimString>(primitive).Value());
        case omu_PrimTag::kTranslatedString:
            return py_FromText(
                As<omu_PrimTranslatedString>(primitive).Value().Text(KTSBasStringMode::Translated));
        case omu_PrimTag::kNone:
            return Py_NewRef(Py_None);
        case omu_PrimTag::kTuple:
            return FromSequence<&PyTuple_New, &PyTuple_SetItem>(As<omu_PrimTuple>(primitive));
        case omu_PrimTag::kList:
            return FromSequence<&PyList_New, &PyList_SetItem>(As<omu_PrimTuple>(primitive));
        case omu_PrimTag::kDictionary:
            return FromDictionary(primitive);
        case omu_PrimTag::kException:
            return py_Require(FromException(As<omu_PrimException>(primitive)));
        case omu_PrimTag::kPyObject:
            return FromWrapper(As<omu_PyObjectWrapper>(primitive));
        default:
            return nullptr;
    }
}

}  // namespace

py_Converter::~py_Converter() {
    for (const auto& [container, primitive] : shared) Py_DECREF(container);
}

NewPrimitive py_Converter::Convert(PyObject* value) {
    if (PyFloat_CheckExact(value)) return FromFloat(value);
    if (PyUnicode_Check(value)) return std::make_unique<omu_PrimString>(py_ToText(value));
    if (PyBool_Check(value)) return std::make_unique<omu_PrimBoolean>(value == Py_True);
    if (PyLong_Check(value)) return FromInteger(value);
    if (value == Py_None) return std::make_unique<omu_PrimNone>();
    if (py_IsObject(value)) return NewPrimitive(py_PrimitiveOf(value).Copy());
    if (PyTuple_Check(value) || PyList_Check(value) || PyDict_Check(value)) {
        return ConvertContainer(value);
    }
    if (PyFloat_Check(value)) return FromFloat(value);
    if (PyComplex_Check(value)) return FromComplex(value);
    return FromForeign(value);
}

NewPrimitive py_Converter::ConvertContainer(PyObject* value) {
    // The library would refuse what is deeper or larger; asking it first bounds the work.
    omu_PrimNesting{++depth, PyObject_Size(value) + 1}.Require();
    NewPrimitive converted;
    if (Py_REFCNT(value) == 1) {
        converted = ConvertUnshared(value);
    } else {
        const auto [place, isNew] = shared.try_emplace(value);
        if (isNew) {
            Py_INCREF(value);
            converted = ConvertUnshared(value);
            shared.at(value) = HandleOf(NewPrimitive(converted->Copy()));
        } else {
            if (place->second.IsNull()) py_Raise(PyExc_ValueError, kContainsItself);
            converted.reset(place->second->Copy());
        }
    }
    --depth;
    return converted;
}

// Scripts that run during the conversion may change a list, so its length is asked each time.
NewPrimitive py_Converter::ConvertUnshared(PyObject* value) {
    if (PyDict_Check(value)) return ConvertDictionary(value);
    const Py_ssize_t length = PySequence_Fast_GET_SIZE(value);
    auto elements = cow_List<omu_PrimHandle>::WithSizeHint(
        static_cast<int>(std::min<Py_ssize_t>(length, std::numeric_limits<int>::max())));
    for (Py_ssize_t i = 0; i < PySequence_Fast_GET_SIZE(value); ++i) {
        const py_Reference item(Py_NewRef(PySequence_Fast_GET_ITEM(value, i)));
        elements.Append(HandleOf(Convert(item.Get())));
    }
    if (PyTuple_Check(value)) return std::make_unique<omu_PrimTuple>(elements);
    return std::make_unique<omu_PrimList>(elements);
}

NewPrimitive py_Converter::ConvertDictionary(PyObject* dictionary) {
    bool areTexts = true;
    bool areIntegers = true;
    PyObject* key = nullptr;
    for (Py_ssize_t place = 0; PyDict_Next(dictionary, &place, &key, nullptr);) {
        areTexts = areTexts && PyUnicode_Check(key);
        areIntegers = areIntegers && PyLong_Check(key) && !PyBool_Check(key);
    }
    if (areTexts) return ConvertEntries<omu_PrimStringDictionary>(dictionary, &py_ToText);
    if (!areIntegers) py_Raise(PyExc_TypeError, kMixedKeys);
    return ConvertEntries<omu_PrimIntDictionary>(dictionary, [](PyObject* integer) {
        const long long number = Wide(integer);
        const bool fits =
            number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
        if (!fits) py_Raise(PyExc_OverflowError, kTooLarge);
        return static_cast<int>(number);
    });
}

// A dictionary of its own, since scripts that run in between may change the given one.
template <class Dictionary, class KeyOf>
NewPrimitive py_Converter::ConvertEntries(PyObject* dictionary, KeyOf keyOf) {
    const py_Reference entries(PyDict_Copy(dictionary));
    auto converted = std::make_unique<Dictionary>();
    PyObject* key = nullptr;
    PyObject* value = nullptr;
    for (Py_ssize_t place = 0; PyDict_Next(entries.Get(), &place, &key, &value);) {
        converted->Insert(keyOf(key), Convert(value).release());
    }
    return converted;
}

PyObject* py_FromPrimitive(NewPrimitive adopted) {
    if (!adopted) return Py_NewRef(Py_None);
    PyObject* const plain = ToPlain(*adopted);
    return plain ? plain : py_ObjectOf(std::move(adopted));
}

PyObject* py_FromPrimitive(const omu_Primitive& primitive) {
    PyObject* const plain = ToPlain(primitive);
    return plain ? plain : py_ObjectOf(NewPrimitive(primitive.Copy()));
}

void py_InstallObjectHooks() noexcept {
    omu_PyObjectWrapper::SetHooks(
        {[](void* object) { Py_INCREF(static_cast<PyObject*>(object)); },
         [](void* object) { Py_DECREF(static_cast<PyObject*>(object)); }});
}
