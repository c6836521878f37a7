#include "host/python/py_Text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "host/python/py_Error.h"

namespace {

/// A keyword and its text. The name is kept alive, so that its address stays its own.
struct Keyword {
    PyObject* name = nullptr;
    cow_String text;
};

}  // namespace

cow_String py_ToText(PyObject* text) {
    Py_ssize_t length = 0;
    const char* const bytes = py_Require(PyUnicode_AsUTF8AndSize(text, &length));
    return std::string_view(bytes, static_cast<std::size_t>(length));
}

PyObject* py_FromText(const cow_String& text) {
    return py_Require(PyUnicode_DecodeUTF8(text.Characters(), text.Length(), py_DECODE_ERRORS));
}

const cow_String& py_KeywordText(PyObject* name) {
    static std::array<Keyword, 256> kept;
    Keyword& place = kept[(reinterpret_cast<std::uintptr_t>(name) >> 4) % kept.size()];
    if (place.name != name) {
        place.text = py_ToText(name);
        Py_INCREF(name);
        Py_XDECREF(place.name);
        place.name = name;
    }
    return place.text;
}
