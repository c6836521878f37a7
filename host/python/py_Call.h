#pragma once

#include <Python.h>

#include <memory>
#include <utility>

#include "foundation/shared/nex_Exception.h"
#include "host/python/py_Convert.h"
#include "host/python/py_Error.h"
#include "host/python/py_Value.h"
#include "omu/omu_Arguments.h"
#include "omu/omu_NewPrimitive.h"

/// What a command answers: a new primitive, or null for None.
using py_Result = std::unique_ptr<omu_Primitive>;

/// The values of a vectorcall: `positional` of them, then those that `keywords`, a tuple or null,
/// names.
struct py_CallValues {
    PyObject* const* values;
    Py_ssize_t positional;
    PyObject* keywords;
};

/// The values of a call as arguments.
[[nodiscard]] omu_Arguments py_Packed(const py_CallValues& values);

/// The one way of every call: packs the values into arguments, runs `command` on them and unpacks
/// its result. A new reference, or null with the Python exception set.
///
/// A command reads its arguments. When `Error()` then says that one does not fit, it returns at
/// once, whatever it returns, and the boundary tells the fault; `End`, which raises it, does as
/// well, but costs as much as several calls.
template <class Command>
[[nodiscard]] PyObject* py_Call(const py_CallValues& values, const Command& command) noexcept {
    try {
        omu_Arguments arguments = py_Packed(values);
        py_Result result = command(arguments);
        if (!arguments.Error()) return py_FromPrimitive(std::move(result));
        py_SetError(*arguments.Fault());
    } catch (const nex_Exception& fault) {
        py_SetError(fault);
    } catch (...) {
        py_SetError();
    }
    return nullptr;
}

/// Calls `function` by a vectorcall with a tuple and a dictionary (or null) of values.
[[nodiscard]] PyObject* py_CallWithTuple(vectorcallfunc function, PyObject* self, PyObject* values,
                                         PyObject* keywords) noexcept;

/// The result of a command or the value of an attribute as a primitive.
template <class T>
[[nodiscard]] py_Result py_Return(const T& value) {
    if constexpr (requires { py_ValueTraits<T>::kName; }) {
        return std::make_unique<py_Value<T>>(value);
    } else {
        return omu_NewPrimitive(value);
    }
}

namespace py_detail {

inline PyMethodDef MethodDef(const char* name,
                             PyObject* (*function)(PyObject*, PyObject* const*, Py_ssize_t,
                                                   PyObject*),
                             const char* doc) {
    // Function pointers of the interpreter differ by flag and are all kept as one type.
    const auto erased = reinterpret_cast<void (*)()>(function);
    return {name, reinterpret_cast<PyCFunction>(erased), METH_FASTCALL | METH_KEYWORDS, doc};
}

template <py_Result (*command)(omu_Arguments&)>
PyObject* EnterFunction(PyObject*, PyObject* const* values, Py_ssize_t positional,
                        PyObject* keywords) {
    return py_Call({values, positional, keywords},
                   [](omu_Arguments& arguments) { return command(arguments); });
}

}  // namespace py_detail

/// The entry of a function of the module. `doc` begins with the signature, "name($module, ...)",
/// a line "--" and a blank one, which `help` takes apart.
template <py_Result (*command)(omu_Arguments&)>
[[nodiscard]] PyMethodDef py_Function(const char* name, const char* doc) {
    return py_detail::MethodDef(name, &py_detail::EnterFunction<command>, doc);
}
