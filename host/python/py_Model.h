#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "host/model/hst_Part.h"
#include "host/python/py_Value.h"
#include "host/store/hst_Database.h"
#include "omu/omu_Arguments.h"

/// A part of a model as scripts hold it: it never changes, so copies share the triangles. Equal to
/// itself alone.
struct py_Part {
    std::shared_ptr<const hst_Part> part;

    [[nodiscard]] const hst_Part& operator*() const noexcept { return *part; }
    [[nodiscard]] const hst_Part* operator->() const noexcept { return part.get(); }
    [[nodiscard]] friend bool operator==(const py_Part&, const py_Part&) = default;
};

template <>
struct py_ValueTraits<py_Part> {
    static constexpr const char* kName = "Part";
    static cow_String Text(const py_Part& part);
};

/// Takes the argument that is a model: the path of its file, or a sequence of parts. The parts of
/// either have names of their own. Throws `py_PythonError` when Ctrl-C stopped the reading.
[[nodiscard]] std::vector<hst_Part> py_GivenModel(omu_Arguments& arguments,
                                                  const cow_String& keyword);

/// The content of the database that the argument "database", the only one, names; nothing when the
/// arguments do not fit.
[[nodiscard]] std::optional<hst_SavedModel> py_GivenSavedModel(omu_Arguments& arguments);

/// Adds parts, reading models, the table and the database of parts to the module.
void py_AddModel(PyObject* module);
