// The triangles at a corner, one after the other.
//
// Data: a triangulation and, of each corner, one triangle at it. Method: counter-clockwise over the
// neighbour links from that triangle; on the hull, where this ends, clockwise from it as well.
#pragma once

#include "triangulation/TriangleList.h"

namespace terravo {

/// The next triangle about a point, counter-clockwise or clockwise; 0 or less at the hull.
inline Index TurnAbout(Index point, const Triangle& triangle, bool counterClockwise) {
    const int corner = triangle.vertices[0] == point ? 1 : triangle.vertices[1] == point ? 2 : 3;
    return triangle.Neighbour(counterClockwise ? NextEdge(NextEdge(corner)) : corner);
}

/// Calls use(t) for the triangles at a point.
/// @param start  one of them.
/// @return false when there are more than most; use was called for one more than these.
template <class Use>
bool ForTrianglesAt(Index point, Index start, const TriangleList& triangles, Index most, Use use) {
    Index steps = 0;
    Index t = start;
    do {
        use(t);
        if (++steps > most) {
            return false;
        }
        t = TurnAbout(point, triangles.table[t], true);
    } while (t > 0 && t != start);
    if (t == start) {
        return true;
    }
    for (t = TurnAbout(point, triangles.table[start], false); t > 0;
         t = TurnAbout(point, triangles.table[t], false)) {
        use(t);
        if (++steps > most) {
            return false;
        }
    }
    return true;
}

} // namespace terravo
