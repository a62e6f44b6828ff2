// The Delaunay library that ours is measured against, behind plain types.
#pragma once

#include "triangulation/TriangleList.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace terravo::bench {

struct PeerRun {
    double seconds = 0; // processor time of the insertion alone
    std::int64_t triangles = 0;
    std::int64_t constrained = 0; // edges
};

/// Triangulates with exact predicates and inexact constructions. All points are inserted as one
/// range, which the library sorts along a space-filling curve first.
PeerRun TriangulateWithPeer(const Array1<PlanPoint>& points);

/// Lays segments between points into their triangulation; the time is that of the segments alone.
PeerRun ConstrainWithPeer(const Array1<PlanPoint>& points,
                          const std::vector<std::pair<Index, Index>>& segments);

} // namespace terravo::bench
