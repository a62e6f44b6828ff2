// The Delaunay library that ours is measured against, behind plain types.
#pragma once

#include "triangulation/TriangleList.h"

#include <cstdint>

namespace terravo::bench {

struct PeerRun {
    double seconds = 0; // processor time of the insertion alone
    std::int64_t triangles = 0;
};

/// Triangulates with exact predicates and inexact constructions. All points are inserted as one
/// range, which the library sorts along a space-filling curve first.
PeerRun TriangulateWithPeer(const Array1<PlanPoint>& points);

} // namespace terravo::bench
