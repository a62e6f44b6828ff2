// Smooth lines as straight ones with fewer vertices.
//
// Data: a set and what it was made of; a contour set. Method: from one vertex of a smooth line a
// chord goes to the farthest one to which it crosses all triangle edges on the way within their
// intervals and stays near the curve. So between edges it stays in the same quadrilaterals as the
// curve, and the lines do not cross either. Pieces that no chord goes over are cut into as many
// straight ones as they need.
#pragma once

#include "contour/smoothing/SmoothContours.h"

namespace terravo {

/// As FlattenContours. Heights may be off by what the options allow, which can be more than
/// SmoothSet::worst. Vertices on breaklines that are corners stay, and so does every vertex of
/// levels with straight pieces.
/// @param options    those that the set was made with.
/// @param tolerance  > 0: no place of the lines is farther from the curve, nor the other way round.
ContourSet ThinContours(const SmoothingSource& source, const SmoothingOptions& options,
                        const SmoothSet& smooth, double tolerance);

} // namespace terravo
