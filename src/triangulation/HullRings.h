// The edge of the surface as closed rings.
//
// Data: the triangles and the links between their hull edges. Method: from a hull edge that no ring
// has yet, the links are followed until they come back.
#pragma once

#include "triangulation/TriangleList.h"

#include <vector>

namespace terravo {

/// One edge of the hull and the point that it begins with.
struct HullStep {
    Index point = 0;
    TriangleEdge edge;
};

/// A closed ring, with the surface on its left.
using HullRing = std::vector<HullStep>;

/// All rings: the outer one counter-clockwise, any round a hole clockwise. The first edge of a ring
/// is its first one by triangle and edge number; rings come in the order of their first edges.
/// @param triangles  whose hull links are whole.
std::vector<HullRing> HullRings(const TriangleList& triangles);

} // namespace terravo
