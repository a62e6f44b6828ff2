// Where a point of a survey is.
//
// Data: a survey of which points may be left out or have other heights. Method: numbers in use
// ascend as those among all do, so that one is found by halving.
#pragma once

#include "survey/Survey.h"
#include "triangulation/SpaceLine.h"

namespace terravo {

/// A point as it is in use, with the height that an edit gave it; as it was read where it is left
/// out.
/// @param point  number among all points of the survey.
SpacePoint PlaceOfPoint(const Survey& survey, Index point);

} // namespace terravo
