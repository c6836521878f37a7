#pragma once

#include <string>
#include <vector>

#include "host/import/imp_ModelReader.h"

/// What `ktsovu inspect` is asked to do.
struct cli_InspectRequest {
    std::vector<std::string> models;
    std::string database;  ///< where the parts are saved; "" nowhere
    bool json = false;
    imp_ReadLimits limits;
};

/// Reads the models, saves their parts when asked to, and prints their table on standard output.
/// Nothing is saved or printed unless every model is sound; then it throws `hst_Error`.
void cli_Inspect(const cli_InspectRequest& request);

/// What `ktsovu show` is asked to do.
struct cli_ShowRequest {
    std::string database;
    bool json = false;
};

/// Reads the saved parts back and prints the table that `inspect` printed. Throws `hst_Error` when
/// the database is none of this program's or is damaged.
void cli_Show(const cli_ShowRequest& request);
