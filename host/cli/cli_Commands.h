#pragma once

#include <string>
#include <vector>

#include "g3d/g3d_Camera.h"
#include "host/import/imp_ModelReader.h"

/// The picture that a command is asked to draw.
struct cli_PictureRequest {
    std::string file;  ///< "" none
    g3d_SavedViewIdEnum view = g3d_VIEW_ISOMETRIC;
};

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

/// Reads the saved parts back, draws them when asked to, and prints the table that `inspect`
/// printed. Throws `hst_Error` when the database is none of this program's or is damaged.
void cli_Show(const cli_ShowRequest& request);
