#pragma once

#include <Python.h>

#include "foundation/coreutils/cow_String.h"

/// What becomes of bytes that are no UTF-8 on their way into the interpreter: U+FFFD, which can be
/// printed.
inline constexpr const char* py_DECODE_ERRORS = "replace";

/// The UTF-8 text of a Python string. A lone surrogate raises UnicodeEncodeError.
[[nodiscard]] cow_String py_ToText(PyObject* text);
/// The Python string of a UTF-8 text; a new reference.
[[nodiscard]] PyObject* py_FromText(const cow_String& text);

/// `py_ToText` of the name of a keyword argument. The names of a script are few and used again and
/// again, so the last ones are kept.
[[nodiscard]] const cow_String& py_KeywordText(PyObject* name);
