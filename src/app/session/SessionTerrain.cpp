// The session's command that gets a terrain ready to be seen.
#include "app/session/Session.h"
#include "app/session/WorkGuard.h"

namespace terravo {

std::optional<TerrainContent> Session::MakeTerrain() {
    constexpr Index kIndexEvery = 5;
    if (depth_ > 0 || survey_.Points().count == 0) {
        return std::nullopt;
    }
    std::optional<TerrainContent> content;
    {
        const WorkGuard work(*this);
        const LevelRule rule = SheetLevels();
        if (survey_.Surface(stop_).triangles.count > 0 && !stop_.IsStopRequested()) {
            const bool hasContours =
                FaultOf(rule, survey_.ShownPoints().extentZ) == LevelFault::None &&
                contours_.Prepare(rule, stop_);
            const ContourSet none;
            content = MakeTerrainContent(
                survey_.Surface(), hasContours ? contours_.Contours() : none, [&](Index level) {
                    return IsIndexLevel(rule, contours_.Levels(), level, kIndexEvery);
                });
        }
        if (stop_.IsStopRequested()) {
            content.reset();
        }
    }
    if (redrawWanted_) {
        DrawContourMap();
    }
    return content;
}

} // namespace terravo
