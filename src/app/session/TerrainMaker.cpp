#include "app/session/TerrainMaker.h"

namespace terravo {

TerrainContent MakeTerrainOf(const SurveyContours& contours, const LevelRule* rule,
                             bool areSmooth) {
    constexpr Index kIndexEvery = 5;
    const ShownSurface surface = contours.TheSurvey().Surface();
    const ContourSet none;
    if (rule == nullptr) {
        return MakeTerrainContent(surface, {none, {}});
    }
    const auto isIndex = [&](Index level) {
        return IsIndexLevel(*rule, contours.Levels(), level, kIndexEvery);
    };
    if (!areSmooth) {
        return MakeTerrainContent(surface, {contours.Contours(), isIndex});
    }
    const ContourSet straight = FlattenContours(
        contours.Smooth(), ContourTolerance(surface.points, surface.triangles.count));
    return MakeTerrainContent(surface, {straight, isIndex, true});
}

} // namespace terravo
