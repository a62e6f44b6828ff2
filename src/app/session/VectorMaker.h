// The content of vector files of a survey.
//
// Data: the survey's contours and what the user wants. Method: where lines are to be smooth, those
// that were prepared are made straight to the tolerance; everything else is as it is without.
#pragma once

#include "app/session/SurveyContours.h"
#include "export/vector/MakeVectorContent.h"

namespace terravo {

/// The smooth lines that were prepared, made straight as the wish has them.
/// @param wish  with a smoothing.
ContourSet StraightLinesOf(const SurveyContours& contours, const VectorWish& wish);

/// @param contours  prepared by the rule, and by the smoothing of the wish where it has one.
VectorContent MakeContent(const SurveyContours& contours, const LevelRule& rule,
                          const VectorWish& wish);

} // namespace terravo
