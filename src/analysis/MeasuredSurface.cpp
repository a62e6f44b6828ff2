#include "analysis/MeasuredSurface.h"

#include <cmath>

namespace terravo {
namespace {

// Differences of doubles of one sign, none more than twice another, are exact.
double LocalStart(const Extent& extent) {
    const bool isFarUp = extent.min > 0 && extent.max <= 2 * extent.min;
    const bool isFarDown = extent.max < 0 && extent.min >= 2 * extent.max;
    return isFarUp || isFarDown ? extent.min : 0;
}

} // namespace

PlanPoint LocalOrigin(const Extent& x, const Extent& y) {
    return {LocalStart(x), LocalStart(y)};
}

MeasuredSurface MeasureFrom(PlanPoint origin, const PointSet& points,
                            const TriangleList& triangles) {
    MeasuredSurface surface{origin, Array1<SpacePoint>(points.count), triangles};
    for (Index i = 1; i <= points.count; ++i) {
        surface.corners[i] = {points.x[i] - origin.x, points.y[i] - origin.y, points.z[i]};
    }
    return surface;
}

MeasuredSurface MeasureFrom(const PointSet& points, const TriangleList& triangles) {
    return MeasureFrom(LocalOrigin(points.extentX, points.extentY), points, triangles);
}

PointSet PointsOf(const MeasuredSurface& surface) {
    PointSet points;
    for (Index i = 1; i <= surface.corners.UpperBound(); ++i) {
        const SpacePoint& corner = surface.corners[i];
        points.Append(surface.origin.x + corner.x, surface.origin.y + corner.y, corner.z);
    }
    return points;
}

} // namespace terravo
