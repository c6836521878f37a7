#pragma once

#include <Python.h>

#include <functional>
#include <memory>
#include <utility>

#include "host/python/py_Call.h"
#include "host/python/py_Object.h"

/// The parts that a Python class for values of type `T` is made of.
template <class T>
class py_Class {
  public:
    [[nodiscard]] static T& ValueOf(PyObject* object) noexcept {
        return static_cast<py_Value<T>&>(py_PrimitiveOf(object)).value;
    }
    [[nodiscard]] static bool IsInstance(PyObject* object) noexcept {
        return Py_TYPE(object) == py_typeOf<T>;
    }

    /// The entry of a method: `command` takes the value, constant or to be changed, and the
    /// arguments.
    template <auto command>
    [[nodiscard]] static PyMethodDef Method(const char* name, const char* doc) {
        return py_detail::MethodDef(name, &EnterMethod<command>, doc);
    }
    /// The entry of a static method.
    template <py_Result (*command)(omu_Arguments&)>
    [[nodiscard]] static PyMethodDef StaticMethod(const char* name, const char* doc) {
        PyMethodDef entry = py_Function<command>(name, doc);
        entry.ml_flags |= METH_STATIC;
        return entry;
    }
    /// The entry of an attribute that scripts read: `getter` answers it from the value.
    template <auto getter>
    [[nodiscard]] static PyGetSetDef Attribute(const char* name, const char* doc) {
        return {name, &Get<getter>, nullptr, doc, nullptr};
    }

    /// The slots of the constructor, a command that answers the value.
    template <py_Result (*constructor)(omu_Arguments&)>
    [[nodiscard]] static PyType_Slot Constructor() {
        return {Py_tp_new, reinterpret_cast<void*>(&New<constructor>)};
    }
    /// The slots by which the value unpacks into `count` numbers: `component` answers one of them.
    template <Py_ssize_t count>
    [[nodiscard]] static PyType_Slot Length() {
        return {Py_sq_length,
                reinterpret_cast<void*>(+[](PyObject*) -> Py_ssize_t { return count; })};
    }
    template <Py_ssize_t count, double (*component)(const T&, int)>
    [[nodiscard]] static PyType_Slot Item() {
        return {Py_sq_item, reinterpret_cast<void*>(&ItemAt<count, component>)};
    }

    /// Adds the class under the name of its traits. With a constructor, calls of the class take the
    /// short way to it.
    template <py_Result (*constructor)(omu_Arguments&) = nullptr>
    static void Add(PyObject* module, PyType_Slot* slots) {
        PyTypeObject* const type = py_AddClass(module, py_ValueTraits<T>::kName, slots);
        if constexpr (constructor != nullptr) type->tp_vectorcall = &CallClass<constructor>;
        py_typeOf<T> = type;
    }

  private:
    template <auto command>
    static PyObject* EnterMethod(PyObject* self, PyObject* const* values, Py_ssize_t positional,
                                 PyObject* keywords) {
        return py_Call(
            py_CallValues{values, positional, keywords},
            [self](omu_Arguments& arguments) { return command(ValueOf(self), arguments); });
    }
    template <py_Result (*constructor)(omu_Arguments&)>
    static PyObject* CallClass(PyObject* type, PyObject* const* values, std::size_t count,
                               PyObject* keywords) {
        return py_detail::EnterFunction<constructor>(type, values, PyVectorcall_NARGS(count),
                                                     keywords);
    }
    template <py_Result (*constructor)(omu_Arguments&)>
    static PyObject* New(PyTypeObject* type, PyObject* values, PyObject* keywords) {
        return py_CallWithTuple(&CallClass<constructor>, reinterpret_cast<PyObject*>(type), values,
                                keywords);
    }

    template <auto getter>
    static PyObject* Get(PyObject* self, void*) {
        try {
            return py_FromPrimitive(py_Return(std::invoke(getter, std::as_const(ValueOf(self)))));
        } catch (...) {
            py_SetError();
            return nullptr;
        }
    }

    template <Py_ssize_t count, double (*component)(const T&, int)>
    static PyObject* ItemAt(PyObject* self, Py_ssize_t index) {
        if (index >= 0 && index < count) {
            return PyFloat_FromDouble(component(ValueOf(self), static_cast<int>(index)));
        }
        PyErr_Format(PyExc_IndexError, "%s index out of range", py_ValueTraits<T>::kName);
        return nullptr;
    }
};

namespace py_detail {

template <class T>
struct Operand {
    static bool Fits(PyObject* object) noexcept { return py_Class<T>::IsInstance(object); }
    static const T& Of(PyObject* object) noexcept { return py_Class<T>::ValueOf(object); }
};
template <>
struct Operand<double> {
    static bool Fits(PyObject* object) noexcept {
        return PyFloat_Check(object) || (PyLong_Check(object) && !PyBool_Check(object));
    }
    static double Of(PyObject* object) {
        const double number = PyFloat_AsDouble(object);
        if (number == -1 && PyErr_Occurred()) throw py_PythonError();
        return number;
    }
};

template <auto operation>
struct Operation;
template <class Result, class Left, class Right, Result (*operation)(const Left&, const Right&)>
struct Operation<operation> {
    static bool Apply(PyObject* left, PyObject* right, PyObject*& result) {
        if (!Operand<Left>::Fits(left) || !Operand<Right>::Fits(right)) return false;
        result = py_FromPrimitive(
            py_Return(operation(Operand<Left>::Of(left), Operand<Right>::Of(right))));
        return true;
    }
};

template <auto... operations>
PyObject* Operate(PyObject* left, PyObject* right) {
    try {
        PyObject* result = nullptr;
        if ((Operation<operations>::Apply(left, right, result) || ...)) return result;
        Py_RETURN_NOTIMPLEMENTED;
    } catch (...) {
        py_SetError();
        return nullptr;
    }
}

}  // namespace py_detail

/// The entry of a binary operator, for `slot` (`Py_nb_add` and so on): the first of `operations`
/// whose operands are of the given classes. Numbers stand for `double`.
template <auto... operations>
[[nodiscard]] PyType_Slot py_Operator(int slot) {
    return {slot, reinterpret_cast<void*>(&py_detail::Operate<operations...>)};
}
