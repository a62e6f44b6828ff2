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

// Numbers in use ascend as those among all do.
SpacePoint PlaceOfPoint(const Survey& survey, Index point) {
    const PointSet& used = survey.Points();
    Index low = 1;
    Index high = used.count;
    while (low < high) {
        const Index middle = low + (high - low) / 2;
        if (survey.NumberAmongAll(middle) < point) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    const bool isUsed = low <= used.count && survey.NumberAmongAll(low) == point;
    const PointSet& points = isUsed ? used : survey.AllPoints();
    const Index number = isUsed ? low : point;
    return {points.x[number], points.y[number], points.z[number]};
}

} // namespace terravo
