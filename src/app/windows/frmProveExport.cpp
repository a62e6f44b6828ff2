// The main window's command that writes files for CAD and GIS.
#include "app/settings/ExportHabit.h"
#include "app/windows/Controls.h"
#include "app/windows/ExportDialog.h"
#include "app/windows/frmProve.h"
#include "contour/LevelRuleText.h"
#include "exchange/VectorFile.h"

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
    session_.ExportVector(dialog.Format(), habit.wish,
                          [&habit](const std::string& path, const terravo::VectorFormat& format,
                                   terravo::VectorContent& content) {
                              return WriteVectorFile(path, format, content, habit.options);
                          });
}
