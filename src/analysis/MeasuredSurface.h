// A surface as it is measured: its corners near an origin of their own.
//
// Data: plan places relative to the origin, heights as they are, triangles. Method: products of
// national-grid coordinates lose digits that those of differences keep. The origin is a place
// from which every difference is exact, so the moved surface is the same one, sign for sign.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/SpaceLine.h"
#include "triangulation/TriangleList.h"

#include <span>
#include <vector>

namespace terravo {

struct MeasuredSurface {
    PlanPoint origin;           // data units
    Array1<SpacePoint> corners; // relative to the origin in plan
    TriangleList triangles;     // of the corners; may be none

    /// The places of a triangle's corners, relative to the origin.
    /// @param j  1 to 3.
    [[nodiscard]] const SpacePoint& Corner(Index triangle, int j) const {
        return corners[triangles.Vertex(j, triangle)];
    }
};

/// An origin from which the differences of all places within the bounds are exact: their lower
/// left corner, in each coordinate where the far side is no farther from zero than twice the near
/// one; zero elsewhere, where moving would gain nothing.
PlanPoint LocalOrigin(const Extent& x, const Extent& y);

/// @param triangles  of the points, the visible ones; the order and the links of the list are kept.
/// @param origin     a local origin of bounds that hold the points.
MeasuredSurface MeasureFrom(PlanPoint origin, const PointSet& points,
                            const TriangleList& triangles);

/// From the local origin of the points.
MeasuredSurface MeasureFrom(const PointSet& points, const TriangleList& triangles);

/// The corners in data units again.
PointSet PointsOf(const MeasuredSurface& surface);

} // namespace terravo
