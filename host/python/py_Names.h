#pragma once

#include <Python.h>

#include "foundation/coreutils/cow_String.h"

/// Refuses a text with a zero byte, at which the operating system would cut it: ValueError.
void py_RefuseZeroBytes(const cow_String& text);

/// Adds the functions on names of objects to the module.
void py_AddNames(PyObject* module);
