#pragma once

#include <string>
#include <vector>

#include "host/cli/cli_Steps.h"

/// What `ktsovu inspect` is asked to do.
struct cli_InspectRequest {
    std::vector<std::string> models;
    std::string database;  ///< where the parts are saved; "" nowhere
    cli_PictureRequest picture;
    bool json = false;
    imp_ReadLimits limits;
};

/// Reads the models, draws and saves their parts when asked to, and prints their table on standard
/// output. Throws `hst_Error`, with nothing drawn, saved or printed, unless every model is sound.
void cli_Inspect(const cli_InspectRequest& request);

/// What `ktsovu show` is asked to do.
struct cli_ShowRequest {
    std::string database;
    cli_PictureRequest picture;
    bool json = false;
};

/// Prints, and draws when asked to, what a database holds, as `inspect` or `clearance` did. True
/// for a check with findings. Throws `hst_Error` when the database is none of this program's or is
/// damaged.
[[nodiscard]] bool cli_Show(const cli_ShowRequest& request);
