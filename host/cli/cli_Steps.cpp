#include "host/cli/cli_Steps.h"

#include <iostream>
#include <iterator>

#include "host/model/hst_Error.h"
#include "host/model/hst_PartName.h"

void cli_RequireWritable(const std::string& database, const cli_PictureRequest& picture) {
    if (!database.empty()) hst_Database::RequireWritable(database);
    if (!picture.file.empty()) pic_PictureFile::RequireWritable(picture.file);
}

cli_Assembly cli_ReadModels(const std::vector<std::string>& models, const imp_ReadLimits& limits,
                            cli_Progress& progress) {
    cli_Assembly assembly;
    for (const std::string& model : models) {
        progress.Show("reading " + model);
        std::vector<hst_Part> read = imp_ReadModel(
            model, limits, [&](double fraction) { progress.Show("reading " + model, fraction); });
        assembly.parts.insert(assembly.parts.end(), std::make_move_iterator(read.begin()),
                              std::make_move_iterator(read.end()));
    }
    assembly.renamed = hst_MakeNamesUnique(assembly.parts);
    return assembly;
}

std::unique_ptr<pic_PictureFile> cli_DrawPicture(const cli_PictureRequest& request,
                                                 const std::function<std::string(pic_Format)>& draw,
                                                 cli_Progress& progress) {
    if (request.file.empty()) return nullptr;
    progress.Show("drawing " + request.file);
    return std::make_unique<pic_PictureFile>(request.file, draw(pic_FormatOf(request.file)));
}

void cli_Save(const std::string& database, const std::vector<hst_Part>& parts,
              const hst_SavedCheck* check, cli_Progress& progress) {
    if (database.empty()) return;
    hst_Database(database, hst_Database::Access::Write)
        .Replace(parts, check, [&](std::size_t saved) {
            progress.Show("saving " + database,
                          static_cast<double>(saved) / static_cast<double>(parts.size()));
        });
}

void cli_Print(const std::function<void(std::ostream&)>& print) {
    print(std::cout);
    if (!std::cout.flush()) throw hst_Error("standard output", "cannot be written");
}

void cli_Warn(const std::string& text) {
    std::cerr << "ktsovu: warning: " << hst_CleanName(text) << std::endl;
}
