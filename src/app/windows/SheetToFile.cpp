#include "app/windows/SheetToFile.h"

#include "export/SheetExport.h"
#include "util/AppError.h"

void SheetToFile(const terravo::RunState& state, terravo::Session& session,
                 const std::string& proposedName, const terravo::SheetScene& scene,
                 const std::string& title) {
    session.ExportPicture(
        proposedName,
        [&](const std::string& path) {
            const std::optional<terravo::PictureKind> kind = terravo::PictureKindOf(path);
            if (!kind) {
                throw terravo::AppError(terravo::ErrorNumber::kDeviceIo, path,
                                        path + ": " +
                                            state.texts[terravo::Text::UnknownPictureKind]);
            }
            terravo::SheetFileWish wish;
            wish.title = title;
            terravo::WriteSheet(path, *kind, scene, wish);
        },
        "pdf");
}
