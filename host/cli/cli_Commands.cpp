#include "host/cli/cli_Commands.h"

#include <optional>

#include "host/cli/cli_ClearanceView.h"
#include "host/cli/cli_PartTable.h"
#include "host/picture/pic_ModelPicture.h"

namespace {

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
    cli_Write(
        request.picture,
        [&](pic_Format format) { return pic_DrawModel(parts, request.picture.view, format); },
        {request.database, parts, nullptr}, progress);
    progress.Clear();
    PrintParts(parts, request.json);
}

bool cli_Show(const cli_ShowRequest& request) {
    cli_Progress progress;
    cli_RequireWritable("", request.picture);
    progress.Show("reading " + request.database);
    const hst_SavedModel model = hst_Database(request.database, hst_Database::Access::Read).Load();
    const std::vector<hst_Part>& parts = model.parts;
    const auto view =
        model.check ? std::optional(cli_ClearanceView::Load(request.database, parts, *model.check))
                    : std::nullopt;
    cli_Write(
        request.picture,
        [&](pic_Format format) {
            return view ? view->Draw(request.picture.view, format)
                        : pic_DrawModel(parts, request.picture.view, format);
        },
        {"", parts, nullptr}, progress);
    progress.Clear();
    if (view) {
        view->Print(request.json);
    } else {
        PrintParts(parts, request.json);
    }
    return view && view->Report().HasFindings();
}
