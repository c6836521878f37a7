#pragma once

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "g3d/g3d_Camera.h"
#include "host/cli/cli_Progress.h"
#include "host/import/imp_ModelReader.h"
#include "host/model/hst_Part.h"
#include "host/picture/pic_PictureFile.h"
#include "host/store/hst_Database.h"

/// The steps that commands are made of.

/// The picture that a command is asked to draw.
struct cli_PictureRequest {
    std::string file;  ///< "" none
    g3d_SavedViewIdEnum view = g3d_VIEW_ISOMETRIC;
};

/// What a command saves.
struct cli_SaveRequest {
    std::string database;  ///< "" nothing is saved
    const std::vector<hst_Part>& parts;
    const hst_SavedCheck* check;  ///< null: none
};

/// The parts of an assembly, each with a name of its own.
struct cli_Assembly {
    std::vector<hst_Part> parts;
    int renamed = 0;  ///< parts whose name another one had already
};

/// Throws unless the database and the picture, where they are named, can be written: before the
/// long work.
void cli_RequireWritable(const std::string& database, const cli_PictureRequest& picture);
[[nodiscard]] cli_Assembly cli_ReadModels(const std::vector<std::string>& models,
                                          const imp_ReadLimits& limits, cli_Progress& progress);
/// Draws the picture by `draw`, in the format of its file, and saves; either only when it is asked
/// for. Both are written or, after a failure or Ctrl-C, none.
void cli_Write(const cli_PictureRequest& picture,
               const std::function<std::string(pic_Format)>& draw, const cli_SaveRequest& save,
               cli_Progress& progress);
/// Lets `print` write to standard output; throws when that cannot be written.
void cli_Print(const std::function<void(std::ostream&)>& print);
/// A line on standard error about something that the result does without.
void cli_Warn(const std::string& text);
