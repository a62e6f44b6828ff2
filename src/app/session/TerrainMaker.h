// A terrain of a survey with its contours, and the place of a point on it.
//
// Data: the survey and the lines of its levels, made before. Method: every fifth level is an index
// line, as on a sheet that nobody has changed; smooth lines are made straight finely enough for the
// triangles that they lie on.
#pragma once

#include "app/session/SurveyContours.h"
#include "view3d/terrain/TerrainContent.h"

namespace terravo {

/// @param contours  of a survey with triangles, prepared by the rule.
/// @param rule      null: without contours.
/// @param areSmooth whether the smooth lines that were prepared are to be shown.
TerrainContent MakeTerrainOf(const SurveyContours& contours, const LevelRule* rule, bool areSmooth);

/// A point as it is in use, with the height that an edit gave it; as it was read where it is left
/// out.
/// @param point  number among all points of the survey.
SpacePoint PlaceOfPoint(const Survey& survey, Index point);

} // namespace terravo
