// A terrain of a survey with its contours.
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

} // namespace terravo
