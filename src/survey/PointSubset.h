// Some of the points of a set as a set of their own.
//
// Data: a point set and numbers in it. Method: coordinates, names, codes and lines go along; bounds
// are those of the chosen points.
#pragma once

#include "survey/PointSet.h"

#include <vector>

namespace terravo {

/// @param numbers  in the set, in the order that the points are to have.
PointSet PointsAt(const PointSet& points, const std::vector<Index>& numbers);

} // namespace terravo
