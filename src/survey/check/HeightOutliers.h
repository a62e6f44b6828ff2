// Single points and small groups whose heights do not fit the points around them.
//
// Data: the points and their triangulation. Method: a first look weighs each height against the
// mean of its neighbours, with weights under which every plane fits exactly; where that deviates
// much more than it does round about, a second look decides. It takes the trend of the
// surroundings, the median slope of the triangles about, and lets a group grow from the point by
// the highest neighbour until the group stands above all that border on it. The step down must be
// several times what heights change along the edges of the surroundings, so steps of the ground,
// noise and steep hills, whose surroundings show the same, are left alone.
#pragma once

#include "survey/check/Finding.h"
#include "survey/check/MeshOrder.h"

namespace terravo {

/// Looks for heights that are far above or below the trend of their neighbours.
/// @param isLone  of each point of the point set, whether it is to be ignored.
void FindHeightOutliers(MeshOrder points, const Array1<char>& isLone, FindingCollector& findings);

} // namespace terravo
