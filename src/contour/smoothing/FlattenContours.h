// Smooth lines as straight ones, for whatever draws or writes no curves.
//
// Data: the control points of the pieces; places, or a contour set. Method: each piece is cut at
// equal steps of its parameter, as many as its second differences ask for. All chords of a piece
// stay in the quadrilateral that holds it, so the straight lines do not cross either, however few
// they are. They must not be thinned afterwards: every vertex of the smooth line stays one.
#pragma once

#include "contour/smoothing/SmoothContours.h"

#include <array>
#include <vector>

namespace terravo {

/// Appends the places of a line but for the last one of a closed line. Neighbours differ.
/// @param controls   3 * pieces + 1 of them.
/// @param tolerance  > 0: no place of the curve is farther from the straight pieces.
/// @param[out] places  relative as the controls.
/// @param[out] pieces  of each place, the number from 0 of the piece that goes on from there; the
///                     last one at the end of an open line.
void FlattenLine(std::span<const PlanPoint> controls, bool closed, double tolerance,
                 std::vector<PlanPoint>& places, std::vector<std::size_t>& pieces);

/// The lines of a set as a contour set in data units, for all that takes one: sheets, regions,
/// exports. A vertex within a triangle has edge 0 of it. No ridges, no isolated points.
ContourSet FlattenContours(const SmoothSet& smooth, double tolerance);

} // namespace terravo
