// The height of the triangulated surface over a place.
//
// Data: points and their triangles. Method: a walk from triangle to triangle towards the place,
// then the plane through the corners of the triangle that holds it. Where the walk comes to a rim,
// the rim edges tell whether the place lies on the surface, and where a walk from the other side
// begins.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

#include <optional>

namespace terravo {

/// @param triangles     of these points, with any number of rims.
/// @param[in,out] near  where the walk begins and ended: any number, best that of a triangle near
///                      the place. A walk of a pointer that moves is then short.
/// @return the height; nothing outside the triangles.
std::optional<double> SurfaceHeight(const PointSet& points, const TriangleList& triangles,
                                    PlanPoint place, Index& near);

} // namespace terravo
