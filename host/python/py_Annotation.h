#pragma once

#include <Python.h>

#include "ann/annC_InterfaceObj.h"

/// The class of an annotation or of a container of them; borrowed.
[[nodiscard]] PyTypeObject* py_TypeOfAnnotation(const annC_InterfaceObj& object) noexcept;

/// Adds annotations, their containers and the history of changes to the module: the members and
/// methods that the library's objects name are attributes of the Python objects.
void py_AddAnnotations(PyObject* module);
