#include "host/cli/cli_Steps.h"

#include <iostream>
#include <iterator>
#include <optional>

#include "host/cli/cli_HeldSignals.h"
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

void cli_Write(const cli_PictureRequest& picture,
               const std::function<std::string(pic_Format)>& draw, const cli_SaveRequest& save,
               cli_Progress& progress) {
    std::string drawn;
    if (!picture.file.empty()) {
        progress.Show("drawing " + picture.file);
        drawn = draw(pic_FormatOf(picture.file));
    }
    const cli_HeldSignals signals;
    std::optional<pic_PictureFile> file;
    if (!picture.file.empty()) file.emplace(picture.file, drawn);
    if (!save.database.empty()) {
        hst_Database(save.database, hst_Database::Access::Write)
            .Replace(save.parts, save.check, [&](std::size_t saved) {
                signals.Check();
                progress.Show("saving " + save.database,
                              static_cast<double>(saved) / static_cast<double>(save.parts.size()));
            });
    }
    if (file) file->Commit();
}

void cli_Print(const std::function<void(std::ostream&)>& print) {
    print(std::cout);
    if (!std::cout.flush()) throw hst_Error("standard output", "cannot be written");
}

void cli_Warn(const std::string& text) {
    std::cerr << "ktsovu: warning: " << hst_CleanName(text) << std::endl;
}
