// Points in the order of a curve that fills the plane.
//
// Data: plan positions. Method: each gets a place along a Hilbert curve over the extent, 16 bits of
// x and of y, four at a time from a table, and the places are sorted by digits. Points in one cell
// of the curve follow a curve of their own when they are many, else x, y and their number, so that
// equal points lie side by side, the lowest number first. Neighbours along the curve are neighbours
// on the ground, so work in this order finds what it needs in the cache.
#pragma once

#include "triangulation/TriangleList.h"

#include <span>

namespace terravo {

/// Brings numbers of positions into the order of the curve over the extent of these positions,
/// which must be within the doubles.
void SortAlongCurve(const Array1<PlanPoint>& coord, std::span<Index> numbers);

} // namespace terravo
