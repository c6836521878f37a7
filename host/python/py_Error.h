#pragma once

// The interpreter's header comes before all others, as it asks for.
#include <Python.h>

#include <stdexcept>

class nex_Exception;

/// Thrown where the interpreter already holds the exception: unwinds to the boundary, which leaves
/// it as it is.
class py_PythonError : public std::exception {};

/// `object`, which is a new or borrowed reference that a call of the interpreter returned. Throws
/// `py_PythonError` when it is null.
template <class Object>
Object* py_Require(Object* object) {
    if (!object) throw py_PythonError();
    return object;
}

/// Raises a Python exception of class `type`.
[[noreturn]] void py_Raise(PyObject* type, const char* text);

/// Sets the Python exception for a C++ exception. One of the scripting family becomes the class
/// that its `PythonType` names, with its message; any other failure of the application is a
/// "CorvixError".
void py_SetError(const nex_Exception& fault) noexcept;
/// The same for the exception that is being handled: call it in a `catch (...)`.
void py_SetError() noexcept;

/// The Python class of the exceptions called `pythonType`; borrowed. Names that are none of the
/// family's are "CorvixError".
[[nodiscard]] PyObject* py_ErrorClass(const char* pythonType) noexcept;

/// Adds the exception classes that Python does not have itself to the module.
void py_AddErrors(PyObject* module);
