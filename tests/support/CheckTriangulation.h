// One checker for everything that must hold of a triangulation.
#pragma once

#include "triangulation/TriangleList.h"

#include <string>

namespace terravo::test {

/// Checks that the triangles are counter-clockwise, their links mutual, the hull list one closed
/// ring, that every distinct point is a corner, that the areas sum to the convex hull, and that no
/// circle through a triangle holds the point across an edge.
/// @return the first thing that does not hold, or an empty text.
std::string FaultOf(const Array1<PlanPoint>& coord, const TriangleList& triangles);

} // namespace terravo::test
