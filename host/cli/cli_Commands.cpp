#include "host/cli/cli_Commands.h"

#include <iostream>
#include <iterator>
#include <memory>
#include <optional>

#include "host/cli/cli_PartTable.h"
#include "host/cli/cli_Progress.h"
#include "host/model/hst_Error.h"
#include "host/model/hst_PartName.h"
#include "host/picture/pic_ModelPicture.h"
#include "host/picture/pic_PictureFile.h"
#include "host/store/hst_Database.h"

namespace {

std::vector<hst_Part> ReadModels(const cli_InspectRequest& request, cli_Progress& progress) {
    std::vector<hst_Part> parts;
    for (const std::string& model : request.models) {
        progress.Show("reading " + model);
        std::vector<hst_Part> read = imp_ReadModel(model, request.limits, [&](double fraction) {
            progress.Show("reading " + model, fraction);
        });
        parts.insert(parts.end(), std::make_move_iterator(read.begin()),
                     std::make_move_iterator(read.end()));
    }
    hst_MakeNamesUnique(parts);
    return parts;
}

double Fraction(std::size_t done, std::size_t count) {
    return static_cast<double>(done) / static_cast<double>(count);
}

/// The picture in its temporary file; nothing when none is asked for.
std::unique_ptr<pic_PictureFile> DrawPicture(const std::vector<hst_Part>& parts,
                                             const cli_PictureRequest& request,
                                             cli_Progress& progress) {
    if (request.file.empty()) return nullptr;
    progress.Show("drawing " + request.file);
    return std::make_unique<pic_PictureFile>(
        request.file, pic_DrawModel(parts, request.view, pic_FormatOf(request.file)));
}

void PrintTable(const std::vector<hst_Part>& parts, bool json) {
    const cli_PartTable table(parts);
    if (json) {
        table.PrintJson(std::cout);
    } else {
        table.Print(std::cout);
    }
    if (!std::cout.flush()) throw hst_Error("standard output", "cannot be written");
}

}  // namespace

void cli_Inspect(const cli_InspectRequest& request) {
    cli_Progress progress;
    // Files that cannot be written are refused before the long work.
    if (!request.database.empty()) hst_Database::RequireWritable(request.database);
    if (!request.picture.file.empty()) pic_PictureFile::RequireWritable(request.picture.file);
    const std::vector<hst_Part> parts = ReadModels(request, progress);
    const auto picture = DrawPicture(parts, request.picture, progress);
    if (!request.database.empty()) {
        hst_Database(request.database, hst_Database::Access::Write)
            .ReplaceParts(parts, [&](std::size_t saved) {
                progress.Show("saving " + request.database, Fraction(saved, parts.size()));
            });
    }
    if (picture) picture->Commit();
    progress.Clear();
    PrintTable(parts, request.json);
}

void cli_Show(const cli_ShowRequest& request) {
    cli_Progress progress;
    if (!request.picture.file.empty()) pic_PictureFile::RequireWritable(request.picture.file);
    progress.Show("reading " + request.database);
    const std::vector<hst_Part> parts =
        hst_Database(request.database, hst_Database::Access::Read).LoadParts();
    if (const auto picture = DrawPicture(parts, request.picture, progress)) picture->Commit();
    progress.Clear();
    PrintTable(parts, request.json);
}
