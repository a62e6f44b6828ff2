// The ground between neighbouring levels, as closed polygons with holes.
//
// Data: for each band rings of plan positions, one ring after another, and which of them are holes
// of which. Method: the lines of the lower level have the band on their left, those of the higher
// one, walked backwards, too, and the hull, walked counter-clockwise, wherever its height is within
// the band; see docs/contours.md.
#pragma once

#include "contour/ContourSet.h"
#include "contour/LevelRegions.h"
#include "triangulation/TriangleList.h"

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace terravo {

/// A connected piece of ground: the outer ring is counter-clockwise, the holes are clockwise.
struct BandPolygon {
    RegionRing outer;
    std::vector<RegionRing> holes;
};

struct LevelBand {
    double low = 0; // heights
    double high = 0;
    std::vector<PlanPoint> vertices; // data units
    std::vector<BandPolygon> polygons;

    [[nodiscard]] std::span<const PlanPoint> VerticesOf(const RegionRing& ring) const {
        return std::span(vertices).subspan(ring.first, ring.count);
    }
};

/// Makes the bands: from the lowest point to the first level, from level to level, from the last
/// level to the highest point. A point exactly at a level belongs to the band above. Rings of a
/// polygon may touch each other in single points but do not cross.
/// @param triangles  of the points.
/// @param contours   of both, increasing, with repeats left out; smooth ones made straight, too.
/// @param round      moves every place before rings are made, so that rings are whole again where
///                   places fall together; none where places stay. Heights of bands stay as they
///                   are. Edges that cross after they were moved are left so.
/// @return one more than there are levels; bands without ground have no polygons.
Array1<LevelBand> MakeLevelBands(const PointSet& points, const TriangleList& triangles,
                                 const ContourSet& contours,
                                 const std::function<PlanPoint(PlanPoint)>& round = nullptr);

/// Square data units.
double AreaOf(const LevelBand& band);

} // namespace terravo
