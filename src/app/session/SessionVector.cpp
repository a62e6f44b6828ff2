// The session's command that writes vector files for other programs.
#include "app/session/FileDialog.h"
#include "app/session/Session.h"
#include "app/session/VectorMaker.h"
#include "app/session/WorkGuard.h"
#include "util/AppError.h"
#include "util/PathText.h"

namespace terravo {
namespace {

FileQuestion QuestionFor(const VectorFormat& format, const PointSet& points,
                         const std::string& title) {
    const std::string extension(format.extension);
    return {.mode = extension.empty() ? "Folder" : "Save",
            .description = std::string(format.name) + " ",
            .pattern = extension.empty() ? "*" : "*." + extension,
            .initialFolder = points.sourceFolder,
            .defaultName = NameWithoutExtension(points.sourceName) +
                           (extension.empty() ? "" : "." + extension),
            .title = title,
            .extension = extension};
}

std::string OneBelowTheOther(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "\r\n") + line;
    }
    return text;
}

} // namespace

VectorOutcome Session::WriteVector(const std::string& path, const VectorFormat& format,
                                   const VectorWish& wish, const VectorWrite& write) {
    const WorkGuard work(*this);
    if (!contours_.Prepare(options_.levels, stop_) ||
        (wish.smoothing && !contours_.PrepareSmooth(*wish.smoothing, stop_))) {
        throw AppError(kDialogCancelled, path, state_.texts[Text::DrawingStopped]);
    }
    VectorContent content = MakeContent(contours_, options_.levels, wish);
    return write(path, format, content);
}

void Session::ExportVector(const VectorFormat& format, const VectorWish& wish,
                           const VectorWrite& write) {
    if (RefusesToExport() || depth_ > 0) {
        return;
    }
    try {
        const std::string path = FileDialog(
            services_.dialogs,
            QuestionFor(format, survey_.Points(), state_.texts[Text::ChooseFile]), state_);
        const VectorOutcome outcome = WriteVector(path, format, wish, write);
        view_->ShowNote(state_.texts[Text::SavedAs] + " " + path +
                        (outcome.verified ? "; " + state_.texts[Text::Verified] : ""));
        if (!outcome.remarks.empty()) {
            services_.messages.ShowInformation(OneBelowTheOther(outcome.remarks),
                                               state_.texts[Text::VectorTitle]);
        }
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

} // namespace terravo
