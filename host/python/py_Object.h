#pragma once

#include <Python.h>

#include <memory>

#include "omu/omu_Primitive.h"

/// A Python object that holds a primitive of the library, which it owns. All classes of the module
/// but the exceptions are of this layout and derive from `ktsovu.Primitive`, which shows, compares
/// and copies as the primitive does.
struct py_Object {
    PyObject_HEAD omu_Primitive* primitive;
};

/// `ktsovu.Primitive`: the class of values that have no class of their own; made by
/// `py_AddObjects`.
inline PyTypeObject* py_primitiveType = nullptr;
/// `ktsovu.Constant`, the class of the symbolic constants.
inline PyTypeObject* py_constantType = nullptr;

[[nodiscard]] inline bool py_IsObject(PyObject* value) noexcept {
    return PyObject_TypeCheck(value, py_primitiveType) != 0;
}
/// The primitive that `object` holds. REQUIRES: `py_IsObject(object)`.
[[nodiscard]] inline omu_Primitive& py_PrimitiveOf(PyObject* object) noexcept {
    return *reinterpret_cast<py_Object*>(object)->primitive;
}

/// A new object of class `type` for `adopted`.
[[nodiscard]] PyObject* py_NewObject(PyTypeObject* type, std::unique_ptr<omu_Primitive> adopted);
/// The object for a primitive that is neither number, text nor plain sequence: a constant is the
/// module's own, a value is of its class, others are `ktsovu.Primitive`. A new reference.
[[nodiscard]] PyObject* py_ObjectOf(std::unique_ptr<omu_Primitive> adopted);

/// Makes a class of the module that derives from `ktsovu.Primitive` and adds it. `slots` end with
/// an empty one. Without a constructor among them scripts cannot make objects.
[[nodiscard]] PyTypeObject* py_AddClass(PyObject* module, const char* name, PyType_Slot* slots);

/// Adds the base class, and the symbolic constants, each by its name.
void py_AddObjects(PyObject* module);
/// Ends the making of classes: scripts derive none from the base.
void py_SealObjects() noexcept;
