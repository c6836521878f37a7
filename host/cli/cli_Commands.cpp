#include "host/cli/cli_Commands.h"

#include "host/cli/cli_ClearanceView.h"
#include "host/cli/cli_PartTable.h"
#include "host/picture/pic_ModelPicture.h"

namespace {

std::unique_ptr<pic_PictureFile> DrawParts(const std::vector<hst_Part>& parts,
                                           const cli_PictureRequest& request,
                                           cli_Progress& progress) {
    return cli_DrawPicture(
        request, [&](pic_Format format) { return pic_DrawModel(parts, request.view, format); },
        progress);
}

void PrintParts(const std::vector<hst_Part>& parts, bool json) {
    const cli_PartTable table(parts);
    cli_Print([&](std::ostream& stream) {
        if (json) {
            table.PrintJson(stream);
        } else {
            table.Print(stream);
        }
    });
}

}  // namespace

void cli_Inspect(const cli_InspectRequest& request) {
    cli_Progress progress;
    cli_RequireWritable(request.database, request.picture);
    const std::vector<hst_Part> parts =
        cli_ReadModels(request.models, request.limits, progress).parts;
    const auto picture = DrawParts(parts, request.picture, progress);
    cli_Save(request.database, parts, nullptr, progress);
    if (picture) picture->Commit();
    progress.Clear();
    PrintParts(parts, request.json);
}

bool cli_Show(const cli_ShowRequest& request) {
    cli_Progress progress;
    cli_RequireWritable("", request.picture);
    progress.Show("reading " + request.database);
    const hst_SavedModel model = hst_Database(request.database, hst_Database::Access::Read).Load();
    if (model.check) {
        const cli_ClearanceView view =
            cli_ClearanceView::Load(request.database, model.parts, *model.check);
        if (const auto picture = view.Draw(request.picture, progress)) picture->Commit();
        progress.Clear();
        view.Print(request.json);
        return view.Report().HasFindings();
    }
    if (const auto picture = DrawParts(model.parts, request.picture, progress)) picture->Commit();
    progress.Clear();
    PrintParts(model.parts, request.json);
    return false;
}
