// A set of points divided into strips that can be triangulated each by itself.
//
// Data: plan positions. Method: lines across the longer side of the extent, through points of a
// sample, cut the set into strips of about equal numbers; points on such a line are told apart by
// the other coordinate, so that a line, slightly turned, parts every two strips. Within a strip the
// points follow a curve that fills it. The division depends on the points alone, not on the
// machine.
#pragma once

#include "triangulation/TriangleList.h"

#include <vector>

namespace terravo {

/// The places of a set, without repeats, strip after strip.
struct Strips {
    struct Range {
        Index first = 1; // number of its first place
        Index last = 0;
        Index left = 0;  // its place that comes first in the direction across the lines
        Index right = 0; // and the one that comes last
    };
    Array1<Index> fileNumber; // of each place, of the earliest point there
    Array1<PlanPoint> coord;  // of each place
    std::vector<Range> ranges;
};

/// @param coord          all within the doubles.
/// @param pointsAStrip   at least about this many, where there are so many.
Strips DivideIntoStrips(const Array1<PlanPoint>& coord, Index pointsAStrip);

} // namespace terravo
