#pragma once

#include <Python.h>

#include <memory>

#include "omu/omu_Primitive.h"

/// What an object that exports a buffer is to the library.
enum class py_BufferKind {
    Array,     ///< it has dimensions
    Floating,  ///< a single value, as numpy's scalars are: a floating number,
    Boolean,   ///< a truth value,
    Complex,   ///< a complex number,
    Other,     ///< an integer or anything else
};
[[nodiscard]] py_BufferKind py_KindOfBuffer(PyObject* exporter);

/// The array of a buffer with dimensions. One of int32, float32 or float64, native and row by row,
/// is copied as one block; other orders of rows and bytes and other integer and floating types are
/// copied number by number: integers to INT, where one beyond it raises OverflowError, float16 to
/// FLOAT. Truth values, complex numbers, texts and objects come as the nested list that they are;
/// other elements (long double, records) are refused with ValueError.
[[nodiscard]] std::unique_ptr<omu_Primitive> py_FromBuffer(PyObject* exporter);

/// Adds `Array` and the function that makes one to the module. An array exports its elements as a
/// buffer for reading, which keeps them as they were when it was asked for.
void py_AddArray(PyObject* module);
