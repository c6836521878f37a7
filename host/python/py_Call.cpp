#include "host/python/py_Call.h"

#include <vector>

#include "foundation/shared/nex_Exception.h"
#include "host/python/py_Reference.h"
#include "host/python/py_Text.h"

PyObject* py_Call(py_Command command, PyObject* self, PyObject* const* values,
                  Py_ssize_t positional, PyObject* keywords) noexcept {
    try {
        py_Converter converter;
        omu_Arguments arguments;
        for (Py_ssize_t i = 0; i < positional; ++i) arguments.Put(converter.Convert(values[i]));
        const Py_ssize_t named = keywords ? PyTuple_GET_SIZE(keywords) : 0;
        for (Py_ssize_t i = 0; i < named; ++i) {
            arguments.Put(converter.Convert(values[positional + i]),
                          py_KeywordText(PyTuple_GET_ITEM(keywords, i)));
        }
        return py_FromPrimitive(command(self, arguments));
    } catch (const nex_Exception& fault) {
        py_SetError(fault);
    } catch (...) {
        py_SetError();
    }
    return nullptr;
}

// The way of `object.__new__` and the like; calls that scripts write come by the other one.
PyObject* py_CallWithTuple(py_Command command, PyObject* self, PyObject* values,
                           PyObject* keywords) noexcept {
    try {
        std::vector<PyObject*> all;
        for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(values); ++i) {
            all.push_back(PyTuple_GET_ITEM(values, i));
        }
        const Py_ssize_t named = keywords ? PyDict_GET_SIZE(keywords) : 0;
        const py_Reference names(PyTuple_New(named));
        PyObject* name = nullptr;
        PyObject* value = nullptr;
        Py_ssize_t count = 0;
        for (Py_ssize_t place = 0; named > 0 && PyDict_Next(keywords, &place, &name, &value);) {
            PyTuple_SET_ITEM(names.Get(), count++, Py_NewRef(name));
            all.push_back(value);
        }
        return py_Call(command, self, all.data(), PyTuple_GET_SIZE(values), names.Get());
    } catch (...) {
        py_SetError();
        return nullptr;
    }
}
