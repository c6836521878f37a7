#pragma once

#include <Python.h>

/// Puts everything that scripts see into the new module `ktsovu`: its classes, constants, functions
/// and exceptions. Throws `pybind11::error_already_set` when the interpreter cannot hold them.
void py_FillModule(PyObject* module);
