// How the program asks for a file: filters, starting folder and proposed name of the dialog.
//
// Data: the texts of one question. Method: they become a plan, which the system's dialog carries
// out; a cancelled dialog is an error of its own number, so that callers can tell it from real
// trouble.
#pragma once

#include "util/RunState.h"
#include "util/Services.h"

#include <string>

namespace terravo {

/// Number of the error that stands for a cancelled dialog.
inline constexpr int kDialogCancelled = 32755;

struct FileQuestion {
    std::string mode;        // "Open", "Save", or "Folder" to save in
    std::string description; // of the first filter
    std::string pattern;     // of the first filter, patterns separated by ";"
    std::string initialFolder;
    std::string defaultName;
    std::string title;
    std::string extension; // for a name without one, without its point
};

/// The dialog that a question stands for. An empty folder means the points folder. Without a
/// default name the box is empty for "Open" and holds the first 5 characters of the pattern for
/// "Save". Throws AppError 5 for any other mode.
FileDialogPlan PlanFileDialog(const FileQuestion& question, const RunState& state);

/// Asks for a file.
/// @return the chosen path. Throws AppError kDialogCancelled when the user cancels.
std::string FileDialog(FileDialogService& dialogs, const FileQuestion& question,
                       const RunState& state);

} // namespace terravo
