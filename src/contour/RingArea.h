// The area of a closed ring.
//
// Data: its vertices. Method: triangles from the first vertex, since far from the origin the
// products of coordinates would lose digits.
#pragma once

#include "triangulation/TriangleList.h"

#include <span>

namespace terravo {

/// Square data units; negative for a clockwise ring.
/// @param ring  1 vertex at least; the first one is not repeated.
inline double AreaOfRing(std::span<const PlanPoint> ring) {
    const PlanPoint o = ring.front();
    double twice = 0;
    for (std::size_t i = 2; i < ring.size(); ++i) {
        const PlanPoint a = ring[i - 1];
        const PlanPoint b = ring[i];
        twice += (a.x - o.x) * (b.y - o.y) - (b.x - o.x) * (a.y - o.y);
    }
    return twice / 2;
}

} // namespace terravo
