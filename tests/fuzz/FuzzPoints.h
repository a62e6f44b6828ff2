// Survey points out of the bytes of an input.
//
// Data: up to 100 points with finite coordinates, as a point file may hold. Method: the first bytes
// choose a scale, a turn and an offset for all; then each point has a byte that says how it comes
// about: on a lattice, as any doubles, as a repeat, on a line or just beside it. So the sets on
// which single decisions are hard are a few bytes away from each other.
#pragma once

#include "fuzz/FuzzInput.h"
#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

namespace terravo::fuzz {

inline constexpr Index kMostPoints = 100;

/// Takes all bytes that are left.
PointSet TakePoints(InputBytes& bytes);

/// Their plan positions.
Array1<PlanPoint> PlanOf(const PointSet& points);

} // namespace terravo::fuzz
