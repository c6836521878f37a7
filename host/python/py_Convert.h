#pragma once

#include <Python.h>

#include <memory>
#include <unordered_map>

#include "omu/omu_Primitive.h"

/// The one conversion of Python's values to the library's primitives:
///
///     bool                       omu_PrimBoolean
///     int                        omu_PrimNumber: int, or unsigned int when it is too large for it
///     float                      omu_PrimNumber: double
///     complex, str, None         omu_PrimComplex, omu_PrimString, omu_PrimNone
///     tuple, list                omu_PrimTuple, omu_PrimList
///     dict                       a dictionary by text or by int keys
///     ktsovu's own objects       the primitive that they hold
///     a buffer                   omu_PrimArray (see py_Array.h)
///     what has __index__         int (so numpy's integers)
///     what has __float__         float (so numpy's floating numbers, fractions, decimals)
///     what has __fspath__        str
///     any other object           omu_PyObjectWrapper
///
/// An integer beyond 32 bits raises OverflowError, a text with a lone surrogate UnicodeEncodeError,
/// a dictionary with other keys TypeError; a sequence that contains itself, and nesting beyond
/// what `omu_PrimNesting` allows, ValueError. Part of the work is the interpreter's, so scripts may
/// run in between.
///
/// A sequence or dictionary that stands at several places of a value is converted once: such values
/// are small to Python, however large they are when written out.
class py_Converter {
  public:
    py_Converter() = default;
    ~py_Converter();
    py_Converter(const py_Converter&) = delete;
    py_Converter& operator=(const py_Converter&) = delete;

    /// The primitive of `value`, which is borrowed. Throws what the family raises, or
    /// `py_PythonError` when the interpreter holds the exception.
    [[nodiscard]] std::unique_ptr<omu_Primitive> Convert(PyObject* value);

  private:
    /// The shared containers of the value with their primitives; null while one is converted.
    using Converted = std::unordered_map<PyObject*, omu_PrimHandle>;

    [[nodiscard]] std::unique_ptr<omu_Primitive> ConvertContainer(PyObject* value);
    [[nodiscard]] std::unique_ptr<omu_Primitive> ConvertUnshared(PyObject* value);
    [[nodiscard]] std::unique_ptr<omu_Primitive> ConvertDictionary(PyObject* dictionary);
    template <class Dictionary, class KeyOf>
    [[nodiscard]] std::unique_ptr<omu_Primitive> ConvertEntries(PyObject* dictionary, KeyOf keyOf);

    int depth = 0;  ///< containers that are open
    Converted shared;
};

/// The Python value of a primitive, the other way round; a new reference. Translated texts come in
/// their translation, kinds without a Python class as `ktsovu.Primitive`, exceptions as an object
/// of their Python class.
[[nodiscard]] PyObject* py_FromPrimitive(std::unique_ptr<omu_Primitive> adopted);
[[nodiscard]] PyObject* py_FromPrimitive(const omu_Primitive& primitive);

/// Lets primitives keep objects of the interpreter alive.
void py_InstallObjectHooks() noexcept;
