// Points at one place, points that nearly are, and points that took no part.
//
// Data: plan positions and their triangulation. Method: points that are no corner of a triangle are
// repeats or were refused; equal places lie side by side when the points are sorted. Near repeats
// are joined along the edges of the triangulation: the shortest of all ways to connect the points
// runs along them, so points that a chain of short steps connects are connected by short edges.
#pragma once

#include "survey/check/Finding.h"
#include "survey/check/MeshOrder.h"
#include "triangulation/TriangulatePoints.h"

#include <optional>

namespace terravo {

/// The distance below which points are near repeats when nobody has said one; see CheckOptions.
double DefaultTolerance(const PointSet& points, const MeshOrder& mesh);

/// Looks for repeats, near repeats and points that took no part.
/// @param mesh  of the points and the triangles of the outcome.
void CheckClosePoints(const PointSet& points, const TriangulationOutcome& outcome,
                      const MeshOrder& mesh, std::optional<double> tolerance,
                      FindingCollector& findings);

} // namespace terravo
