#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "host/clearance/clr_Check.h"
#include "host/python/py_Value.h"

/// A clearance check as scripts hold it: the report and the names of the parts. It never changes.
struct py_CheckedModel {
    std::vector<std::string> names;
    clr_Report report;
};

/// The result of a check; equal to itself alone.
struct py_Clearance {
    std::shared_ptr<const py_CheckedModel> model;

    [[nodiscard]] friend bool operator==(const py_Clearance&, const py_Clearance&) = default;
};

/// One pair of parts of a result.
struct py_ClearancePair {
    std::shared_ptr<const py_CheckedModel> model;
    std::size_t index = 0;

    [[nodiscard]] const clr_Finding& Finding() const { return model->report.pairs[index]; }
    [[nodiscard]] friend bool operator==(const py_ClearancePair&,
                                         const py_ClearancePair&) = default;
};

template <>
struct py_ValueTraits<py_Clearance> {
    static constexpr const char* kName = "Clearance";
    static cow_String Text(const py_Clearance& clearance);
};
template <>
struct py_ValueTraits<py_ClearancePair> {
    static constexpr const char* kName = "ClearancePair";
    static cow_String Text(const py_ClearancePair& pair);
};

/// Adds the check and its results to the module.
void py_AddClearance(PyObject* module);
