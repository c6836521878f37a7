#include "host/python/py_Call.h"

#include <vector>

#include "host/python/py_Reference.h"
#include "host/python/py_Text.h"

omu_Arguments py_Packed(const py_CallValues& values) {
    static const omu_Arguments::Keywords noKeywords;
    py_Converter converter;
    PyObject* const* value = values.values;
    auto elements = cow_List<omu_PrimHandle>::WithSizeHint(static_cast<int>(values.positional));
    for (Py_ssize_t i = 0; i < values.positional; ++i) {
        elements.Append(omu_PrimHandle(converter.Convert(*value++).release()));
    }
    const Py_ssize_t named = values.keywords ? PyTuple_GET_SIZE(values.keywords) : 0;
    if (named == 0) return omu_Arguments(omu_PrimTuple(elements), noKeywords);
    omu_Arguments::Keywords keywords;
    for (Py_ssize_t i = 0; i < named; ++i) {
        py_Result argument = converter.Convert(*value++);  // may run scripts that call, too
        keywords.Insert(py_KeywordText(PyTuple_GET_ITEM(values.keywords, i)), argument.release());
    }
    return omu_Arguments(omu_PrimTuple(elements), keywords);
}

// The way of `object.__new__` and the like; calls that scripts write come by vectorcall.
PyObject* py_CallWithTuple(vectorcallfunc function, PyObject* self, PyObject* values,
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
        return function(self, all.data(), static_cast<std::size_t>(PyTuple_GET_SIZE(values)),
                        names.Get());
    } catch (...) {
        py_SetError();
        return nullptr;
    }
}
