// The main window's command that writes files for CAD and GIS.
#include "app/windows/Controls.h"
#include "app/windows/VectorChoice.h"
#include "app/windows/frmProve.h"
#include "contour/LevelRuleText.h"

void frmProve::ExportVector() {
    if (session_.RefusesToExport()) {
        return;
    }
    const auto levels = [this] {
        return ToQString(terravo::ResultText(
            session_.Options().levels, session_.TheSurvey().ShownPoints().extentZ, state_.texts));
    };
    if (const std::optional<VectorChoice> choice = AskForVector(
            state_, session_, levels, [this] { ShowLevels(); }, this)) {
        session_.ExportVector(choice->format, choice->wish, choice->Writer());
    }
}
