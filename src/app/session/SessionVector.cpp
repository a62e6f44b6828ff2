// The session's commands that write vector files for other programs.
#include "app/session/DifferenceContent.h"
#include "app/session/FileDialog.h"
#include "app/session/Session.h"
#include "app/session/VectorMaker.h"
#include "app/session/WorkGuard.h"
#include "util/AppError.h"
#include "util/PathText.h"

namespace terravo {
namespace {

FileQuestion QuestionFor(const VectorFormat& format, const std::string& name,
                         const std::string& folder, const std::string& title) {
    const std::string extension(format.extension);
    return {.mode = extension.empty() ? "Folder" : "Save",
            .description = std::string(format.name) + " ",
            .pattern = extension.empty() ? "*" : "*." + extension,
            .initialFolder = folder,
            .defaultName = name + (extension.empty() ? "" : "." + extension),
            .title = title,
            .extension = extension};
}

} // namespace

// Nothing is made where it was stopped.
void Session::ExportContent(const VectorFormat& format, const std::string& name,
                            const VectorMaking& make, const VectorWrite& write) {
    try {
        const std::string path = FileDialog(services_.dialogs,
                                            QuestionFor(format, name, survey_.Points().sourceFolder,
                                                        state_.texts[Text::ChooseFile]),
                                            state_);
        const VectorOutcome outcome = [&] {
            const WorkGuard work(*this);
            std::optional<VectorContent> content = make();
            if (!content) {
                throw AppError(kDialogCancelled, path, state_.texts[Text::DrawingStopped]);
            }
            return write(path, format, *content);
        }();
        view_->ShowNote(state_.texts[Text::SavedAs] + " " + path +
                        (outcome.verified ? "; " + state_.texts[Text::Verified] : ""));
        TellRemarks(outcome.remarks, state_.texts[Text::VectorTitle]);
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            services_.log.Write(error.what());
            services_.messages.ShowCritical(
                state_.texts[Text::VectorNotWritten] + "\r\n" + error.what(), "");
        }
    }
    if (redrawWanted_) {
        DrawContourMap();
    }
}

void Session::ExportVector(const VectorFormat& format, const VectorWish& wish,
                           const VectorWrite& write) {
    if (RefusesToExport() || depth_ > 0) {
        return;
    }
    const auto make = [&]() -> std::optional<VectorContent> {
        if (!contours_.Prepare(options_.levels, stop_) ||
            (wish.smoothing && !contours_.PrepareSmooth(*wish.smoothing, stop_))) {
            return std::nullopt;
        }
        return MakeContent(contours_, options_.levels, wish);
    };
    ExportContent(format, NameWithoutExtension(survey_.Points().sourceName), make, write);
}

void Session::ExportDifference(const DifferenceSurface& difference, const VectorFormat& format,
                               const VectorWish& wish, const VectorWrite& write) {
    if (depth_ > 0) {
        return;
    }
    const std::string name = NameWithoutExtension(survey_.Points().sourceName) + "-difference";
    ExportContent(
        format, name, [&] { return MakeDifferenceContent(difference, name, wish, stop_); }, write);
}

} // namespace terravo
