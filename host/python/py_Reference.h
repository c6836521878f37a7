#pragma once

#include <utility>

#include "host/python/py_Error.h"

/// A reference to a Python object that it releases when it goes.
class py_Reference {
  public:
    /// Takes over the reference `owned` that a call of the interpreter returned. Throws
    /// `py_PythonError` when it is null.
    explicit py_Reference(PyObject* owned) : object(py_Require(owned)) {}
    ~py_Reference() { Py_XDECREF(object); }
    py_Reference(const py_Reference&) = delete;
    py_Reference& operator=(const py_Reference&) = delete;

    [[nodiscard]] PyObject* Get() const noexcept { return object; }
    /// Gives the reference away.
    [[nodiscard]] PyObject* Release() noexcept { return std::exchange(object, nullptr); }

  private:
    PyObject* object;
};
