#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/cli/cli_Steps.h"

/// What `ktsovu clearance` is asked to do.
struct cli_ClearanceRequest {
    std::vector<std::string> models;
    double gap = 0;                    ///< the required clearance, in the unit of the models
    std::optional<double> touch;       ///< nothing: a millionth of the diagonal of the assembly
    std::vector<std::string> moves;    ///< "PART=x,y,z" or "PART=x,y,z,rx,ry,rz"
    std::vector<std::string> ignored;  ///< "PART:PART"
    unsigned labelCount = 10;
    std::string database;  ///< where parts and result are saved; "" nowhere
    cli_PictureRequest picture;
    bool json = false;
    imp_ReadLimits limits;
};

/// Checks which parts interfere or come closer than allowed; prints the result on standard output,
/// draws and saves it when asked to. True when there are findings. Throws `hst_Error`, with nothing
/// drawn, saved or printed, for input that it refuses.
[[nodiscard]] bool cli_Clearance(const cli_ClearanceRequest& request);

/// What `ktsovu diff` is asked to do.
struct cli_DiffRequest {
    std::string before;
    std::string after;
};

/// Prints which findings are new, gone or changed from one saved check to another. True when there
/// are any. Throws `hst_Error` when a database holds no sound check.
[[nodiscard]] bool cli_Diff(const cli_DiffRequest& request);
