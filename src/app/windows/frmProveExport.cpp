// The main window's command that writes files for CAD and GIS.
#include "app/settings/ExportHabit.h"
#include "app/windows/Controls.h"
#include "app/windows/ExportDialog.h"
#include "app/windows/frmProve.h"
#include "contour/LevelRuleText.h"
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

void frmProve::ExportVector() {
    if (session_.RefusesToExport()) {
        return;
    }
    const auto levels = [this] {
        return ToQString(terravo::ResultText(
            session_.Options().levels, session_.TheSurvey().ShownPoints().extentZ, state_.texts));
    };
    ExportDialog dialog(state_, session_.Settings(), levels(), this);
    connect(&dialog, &ExportDialog::LevelsAsked, &dialog, [&] {
        ShowLevels();
        dialog.SetLevels(levels());
    });
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const terravo::ExportHabit habit = dialog.Habit();
    KeepExportHabit(session_.Settings(), habit);
    session_.ExportVector(dialog.Format(), WishOf(habit, dialog.Format(), session_),
                          [&habit](const std::string& path, const terravo::VectorFormat& format,
                                   terravo::VectorContent& content) {
                              return WriteVectorFile(path, format, content, habit.options);
                          });
}
