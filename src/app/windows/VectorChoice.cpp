#include "app/windows/VectorChoice.h"

#include "app/windows/ExportDialog.h"
#include "exchange/VectorFile.h"

namespace {

// Smooth lines are those of the sheet, or the usual ones while there is no such sheet.
terravo::VectorWish WishOf(const terravo::ExportHabit& habit, const terravo::VectorFormat& format,
                           const terravo::Session& session) {
    terravo::VectorWish wish = habit.wish;
    if (habit.smooth && TakesSmoothLines(format, wish.parts)) {
        const std::optional<terravo::SheetPlan>& sheet = session.KeptSheet();
        wish.smoothing =
            (sheet ? sheet->smoothing : std::nullopt).value_or(terravo::SmoothingOptions());
    }
    return wish;
}

} // namespace

terravo::Session::VectorWrite VectorChoice::Writer() const {
    return [options = options](const std::string& path, const terravo::VectorFormat& chosen,
                               terravo::VectorContent& content) {
        return WriteVectorFile(path, chosen, content, options);
    };
}

std::optional<VectorChoice> AskForVector(const terravo::RunState& state, terravo::Session& session,
                                         const std::function<QString()>& levels,
                                         const std::function<void()>& askLevels, QWidget* parent) {
    ExportDialog dialog(state, session.Settings(), levels(), parent);
    if (askLevels) {
        QObject::connect(&dialog, &ExportDialog::LevelsAsked, &dialog, [&] {
            askLevels();
            dialog.SetLevels(levels());
        });
    } else {
        dialog.HideChoiceOfLines();
    }
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    const terravo::ExportHabit habit = dialog.Habit();
    KeepExportHabit(session.Settings(), habit);
    return VectorChoice{dialog.Format(), WishOf(habit, dialog.Format(), session), habit.options};
}
