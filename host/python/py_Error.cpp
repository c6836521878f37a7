#include "host/python/py_Error.h"

#include <new>
#include <string_view>

#include "foundation/shared/nex_Exception.h"
#include "host/model/hst_Error.h"
#include "host/python/py_Text.h"

namespace {

/// A class of exceptions that scripts can catch: Python's own, or one of the module's that is
/// derived from the closest of Python's.
struct ErrorClass {
    const char* name;
    PyObject** closest;
    const char* doc = nullptr;  ///< of a class of the module
    PyObject* created = nullptr;
};

constinit ErrorClass errorClasses[] = {
    {"TypeError", &PyExc_TypeError},
    {"ValueError", &PyExc_ValueError},
    {"AttributeError", &PyExc_AttributeError},
    {"KeyError", &PyExc_KeyError},
    {"IndexError", &PyExc_IndexError},
    {"OverflowError", &PyExc_OverflowError},
    {"NameError", &PyExc_NameError},
    {"ZeroDivisionError", &PyExc_ZeroDivisionError},
    {"RangeError", &PyExc_ValueError, "A number lies outside the range that is allowed."},
    {"ColorError", &PyExc_ValueError, "There is no colour of that name."},
    {"FontError", &PyExc_ValueError, "There is no font of that name."},
    {"CorvixNameError", &PyExc_ValueError, "A name breaks the rules for names of its kind."},
    {"AccessError", &PyExc_PermissionError, "The access is not allowed."},
    {"GuiAccessError", &PyExc_PermissionError, "The access needs the graphical interface."},
    {"CorvixError", &PyExc_RuntimeError, "The application failed, or refuses what it was given."},
};

constexpr const char* kOtherFailures = "CorvixError";

void Set(PyObject* type, std::string_view text) noexcept {
    PyObject* const message =
        PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), py_DECODE_ERRORS);
    if (!message) return;  // exhausted memory is set instead
    PyErr_SetObject(type, message);
    Py_DECREF(message);
}

}  // namespace

void py_Raise(PyObject* type, const char* text) {
    PyErr_SetString(type, text);
    throw py_PythonError();
}

PyObject* py_ErrorClass(const char* pythonType) noexcept {
    const std::string_view wanted = pythonType;
    for (const ErrorClass& known : errorClasses) {
        if (wanted == known.name) return known.created ? known.created : *known.closest;
    }
    return py_ErrorClass(kOtherFailures);
}

void py_SetError(const nex_Exception& fault) noexcept {
    try {
        Set(py_ErrorClass(fault.PythonType()),
            fault.JournalMessage(KTSBasStringMode::Translated).View());
    } catch (...) {
        PyErr_NoMemory();
    }
}

void py_SetError() noexcept {
    try {
        throw;
    } catch (const py_PythonError&) {
    } catch (const nex_Exception& fault) {
        py_SetError(fault);
    } catch (const std::bad_alloc&) {
        PyErr_NoMemory();
    } catch (const std::length_error& fault) {
        Set(PyExc_OverflowError, fault.what());
    } catch (const std::exception& fault) {
        Set(py_ErrorClass(kOtherFailures), fault.what());
    } catch (...) {
        Set(py_ErrorClass(kOtherFailures), "unknown failure");
    }
}

void py_AddErrors(PyObject* module) {
    for (ErrorClass& own : errorClasses) {
        if (!own.doc) continue;
        if (!own.created) {
            const std::string name = std::string("ktsovu.") + own.name;
            own.created =
                py_Require(PyErr_NewExceptionWithDoc(name.c_str(), own.doc, *own.closest, nullptr));
        }
        if (PyModule_AddObjectRef(module, own.name, own.created) < 0) throw py_PythonError();
    }
}
