// The edge of a surface without triangles that rounding has made flat.
//
// Data: edges of triangles, the surface on their left, and the triangles left out. Method: points
// that lie on a line but for the last digits of their coordinates leave triangles along the hull
// that are no wider than those digits. What is computed in them falls on either side of the hull by
// chance. They are peeled off from the hull inwards, as long as that takes next to nothing away.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

#include <vector>

namespace terravo {

struct SurfaceOutline {
    std::vector<TriangleEdge> edges;
    std::vector<Index> leftOut; // triangles; together less than 1e-10 of the area
};

SurfaceOutline OutlineOf(const PointSet& points, const TriangleList& triangles);

} // namespace terravo
