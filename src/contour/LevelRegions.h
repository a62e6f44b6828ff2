// The ground at or above each level, as closed rings.
//
// Data: for each level rings of plan positions, one ring after another. Method: contour lines have
// higher ground on their left, and so has the hull, walked counter-clockwise, where it is above the
// level: from the end of an open line the ring goes along the hull to where the next open line
// begins. Closed lines are rings by themselves. See docs/contours.md.
#pragma once

#include "contour/ContourSet.h"
#include "triangulation/TriangleList.h"

#include <cstddef>
#include <span>
#include <vector>

namespace terravo {

/// Vertices that follow each other; the last one leads to the first, which is not repeated.
struct RegionRing {
    std::size_t first = 0; // in LevelRegion::vertices
    std::size_t count = 0; // 3 at least
};

/// The ground at or above a level. Rings round ground are counter-clockwise, rings round holes
/// clockwise; they may touch but do not cross, so both the even-odd rule and the oriented one fill
/// them.
struct LevelRegion {
    double value = 0;                // height
    std::vector<PlanPoint> vertices; // data units
    std::vector<RegionRing> rings;

    [[nodiscard]] std::span<const PlanPoint> VerticesOf(const RegionRing& ring) const {
        return std::span(vertices).subspan(ring.first, ring.count);
    }
};

/// Makes the region of every level, on several threads. The band between two levels is the region
/// of the lower without that of the higher. Ridges and isolated points have no area.
/// @param triangles  of the points.
/// @param contours   of both, with repeats left out.
/// @return one a level, in their order; all that is below the lowest point is the whole hull, all
///         that is above the highest has no ring.
Array1<LevelRegion> MakeLevelRegions(const PointSet& points, const TriangleList& triangles,
                                     const ContourSet& contours);

/// Square data units.
double AreaOf(const LevelRegion& region);

} // namespace terravo
