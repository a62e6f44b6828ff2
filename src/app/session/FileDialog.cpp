#include "app/session/FileDialog.h"

#include "util/AppError.h"

namespace terravo {
namespace {

constexpr const char* kSource = "FileDialog";
constexpr std::size_t kProposedLength = 5;

} // namespace

FileDialogPlan PlanFileDialog(const FileQuestion& question, const RunState& state) {
    const bool isFolder = question.mode == "Folder";
    if (question.mode != "Open" && question.mode != "Save" && !isFolder) {
        throw AppError(ErrorNumber::kInvalidCall, kSource, "Invalid procedure call or argument");
    }
    FileDialogPlan plan;
    plan.save = question.mode != "Open";
    plan.isFolder = isFolder;
    plan.filters = {{question.description + " (" + question.pattern + ")", question.pattern},
                    {"Tutti i Files (*.*)", "*.*"}};
    plan.folder = question.initialFolder.empty() ? state.pointsFolder : question.initialFolder;
    plan.name = question.defaultName;
    if (plan.name.empty() && plan.save) {
        plan.name = question.pattern.substr(0, kProposedLength);
    }
    plan.title = question.title + " ";
    plan.extension = question.extension;
    return plan;
}

std::string FileDialog(FileDialogService& dialogs, const FileQuestion& question,
                       const RunState& state) {
    const std::optional<std::string> chosen = dialogs.Choose(PlanFileDialog(question, state));
    if (!chosen) {
        throw AppError(kDialogCancelled, kSource, "Cancel was selected.");
    }
    return *chosen;
}

} // namespace terravo
