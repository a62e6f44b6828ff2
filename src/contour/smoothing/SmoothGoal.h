// Where the vertices of a line would best lie.
//
// Data: the slider of a vertex and, for the goal of a curved surface, the slopes at the points.
// Method: the level's place on the straight edge, or on the cubic that has the heights and the
// slopes of its ends.
#pragma once

#include "contour/smoothing/PointGradients.h"
#include "contour/smoothing/Slider.h"

namespace terravo::smoothing {

/// What of its interval a vertex keeps away from either end.
inline constexpr double kMargin = 0.01;

/// @param gradients  null for the plain goal, which also holds where a slope is not known.
/// @return a part of the edge.
double GoalOf(const Slider& slider, const PointGradients* gradients);

} // namespace terravo::smoothing
