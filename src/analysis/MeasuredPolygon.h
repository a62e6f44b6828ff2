// The ground within rings, as triangles that a surface can be cut by.
//
// Data: closed rings of plan places. Method: the vertices of the rings are triangulated and the
// rings laid in; what lies inside an odd number of them is kept. Cutting is overlaying: the parts
// of the surface's triangles that lie within those of the polygon, fanned.
#pragma once

#include "analysis/MeasuredSurface.h"
#include "util/StopToken.h"
#include "util/TextCatalogue.h"

#include <optional>

namespace terravo {

using PlanRing = std::vector<PlanPoint>; // the first vertex is not repeated

/// Rings as a flat surface at height 0.
struct PolygonReading {
    MeasuredSurface ground;
    std::optional<Text> failure; // a full sentence; the ground has no triangles then
};

/// @param origin  of the surfaces that are to be cut.
/// @param rings   in data units; at least one. Where rings lie in each other, holes and islands
///                alternate.
PolygonReading MakePolygon(PlanPoint origin, const std::vector<PlanRing>& rings);

/// The part of a surface within a polygon, its triangles linked along their own rims. Corners that
/// cutting makes are rounded once, near the origin.
/// @param polygon  made from the same origin.
/// @param stop     stage "measure".
MeasuredSurface CutByPolygon(const MeasuredSurface& surface, const MeasuredSurface& polygon,
                             const StopToken& stop = StopToken());

} // namespace terravo
