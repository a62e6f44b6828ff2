// How far each level is from its neighbours.
//
// Data: one record a level, in the order of the levels. Method: neighbours are the next values that
// differ, whatever the order; the lowest and the highest level take the one neighbour that they
// have, a single level the range of heights.
#pragma once

#include "contour/LevelSet.h"
#include "survey/PointSet.h"

namespace terravo::smoothing {

struct LevelSpacing {
    double below = 0;        // > 0
    double above = 0;        // > 0
    bool isRepeated = false; // a level before has the same value
    bool isClose = false;    // nearer to a neighbour than a millionth of the range
};

/// @param range  of the heights.
Array1<LevelSpacing> SpacingsOf(const LevelSet& levels, const Extent& range);

} // namespace terravo::smoothing
