// The hulls that insertion in file order goes through.
//
// Data: plan positions in file order, and the hull of those taken so far as a ring. Method: each
// point in turn is inside the hull, on it or outside; outside, it takes the place of the edges that
// it sees. Insertion decides the same from computed signs, and a hull decided wrongly stays wrong:
// nothing that comes later repairs it, as swaps do inside. So each of these decisions must stand
// clear of rounding errors, or be exact.
#pragma once

#include "triangulation/TriangleList.h"

#include <atomic>

namespace terravo {

/// True when every decision about the hulls is clear or exact.
/// @param coord          positions in file order; the first two differ.
/// @param thirdPosition  number of the point that comes third, off the line through the first two.
/// @param span           longer side of the extent of all points.
/// @param exactReach     differences up to this are multiples of one step few enough for exact
/// work.
/// @param stop           ends the work, with false, when somebody sets it.
bool HullHistoryIsClear(const Array1<PlanPoint>& coord, Index thirdPosition, double span,
                        double exactReach, const std::atomic<bool>& stop);

} // namespace terravo
