// The session's commands that make sheets.
#include "app/session/Session.h"
#include "app/session/WorkGuard.h"

namespace terravo {

LevelRule Session::SheetLevels() const {
    return levelsChosen_ ? options_.levels : RoundLevels(survey_.ShownPoints().extentZ);
}

std::optional<SheetScene> Session::MakeSheet(const SheetPlan& plan, const TextMeasure& measure) {
    if (depth_ > 0 || survey_.Points().count == 0) {
        return std::nullopt;
    }
    std::optional<SheetScene> scene;
    {
        const WorkGuard work(*this);
        scene = sheets_.Make(plan, SheetLevels(), measure, stop_);
    }
    if (redrawWanted_) {
        DrawContourMap();
    }
    return scene;
}

std::optional<SheetScene> Session::MakeSheetMeanwhile(const SheetPlan& plan,
                                                      const TextMeasure& measure,
                                                      bool& wasInterrupted) {
    givesWay_ = true;
    std::optional<SheetScene> scene = MakeSheet(plan, measure);
    givesWay_ = false;
    wasInterrupted = wasInterrupted_;
    return scene;
}

OpeningWindows Session::OpensWith() const {
    return LoadOpeningWindows(services_.settings);
}

void Session::SetOpensWith(OpeningWindows windows) {
    KeepOpeningWindows(services_.settings, windows);
}

} // namespace terravo
