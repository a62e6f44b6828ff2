// The session's command that gets a terrain ready to be seen.
#include "app/session/Session.h"
#include "app/session/TerrainMaker.h"
#include "app/session/WorkGuard.h"

namespace terravo {

std::optional<TerrainContent>
Session::MakeTerrain(const std::optional<SmoothingOptions>& smoothing) {
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
            const bool areSmooth = hasContours && smoothing &&
                                   survey_.Surface().triangles.count <= kMostSmoothed &&
                                   contours_.PrepareSmooth(*smoothing, stop_);
            content = MakeTerrainOf(contours_, hasContours ? &rule : nullptr, areSmooth);
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
