#pragma once

#include <cstddef>
#include <optional>

#include "host/clearance/clr_Check.h"
#include "mdl/mdl_PropertyTable.h"

/// The pairs of a report as a table of ten columns: the kind, the numbers of both parts, the
/// length, then x, y, z on the first and on the second part.
[[nodiscard]] mdl_PropertyTable clr_ResultTable(const clr_Report& report);

/// The pairs that such a table holds, of an assembly of `partCount` parts; nothing when it holds
/// something else.
[[nodiscard]] std::optional<std::vector<clr_Finding>> clr_ReadResultTable(
    const mdl_PropertyTable& table, std::size_t partCount);
