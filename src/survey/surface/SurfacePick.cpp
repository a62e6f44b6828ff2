#include "survey/surface/SurfacePick.h"

#include "survey/SurfaceHeight.h"
#include "triangulation/exact/ExactSigns.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

PlanPoint PlaceOf(const PointSet& points, Index point) {
    return {points.x[point], points.y[point]};
}

double DistanceToSide(PlanPoint a, PlanPoint b, PlanPoint place) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double squared = dx * dx + dy * dy;
    const double along =
        squared > 0 ? std::clamp(((place.x - a.x) * dx + (place.y - a.y) * dy) / squared, 0.0, 1.0)
                    : 0;
    return std::hypot(a.x + along * dx - place.x, a.y + along * dy - place.y);
}

} // namespace

std::optional<double> SurfacePick::HeightAt(PlanPoint place) {
    const ShownSurface shown = survey_.Surface();
    return SurfaceHeight(shown.points, shown.triangles, place, near_);
}

// Beside the surface the walk ends at its rim, where a point may be in reach all the same.
std::optional<Index> SurfacePick::PointAt(PlanPoint place, double reach) {
    static_cast<void>(HeightAt(place));
    const ShownSurface shown = survey_.Surface();
    if (near_ < 1 || near_ > shown.triangles.count) {
        return std::nullopt;
    }
    std::optional<Index> nearest;
    double least = reach;
    for (const Index corner : shown.triangles.table[near_].vertices) {
        const PlanPoint p = PlaceOf(shown.points, corner);
        const double distance = std::hypot(p.x - place.x, p.y - place.y);
        if (distance <= least) {
            least = distance;
            nearest = corner;
        }
    }
    return nearest;
}

std::optional<PickedSide> SurfacePick::SideAt(PlanPoint place) {
    if (!HeightAt(place)) {
        return std::nullopt;
    }
    const ShownSurface shown = survey_.Surface();
    PickedSide nearest;
    double least = std::numeric_limits<double>::infinity();
    for (int j = 1; j <= 3; ++j) {
        const PlanPoint a = PlaceOf(shown.points, shown.triangles.Vertex(j, near_));
        const PlanPoint b = PlaceOf(shown.points, shown.triangles.Vertex(NextEdge(j), near_));
        const double distance = DistanceToSide(a, b, place);
        if (distance < least) {
            least = distance;
            nearest = {{near_, j}, a, b, false};
        }
    }
    if (shown.shaped != nullptr) {
        const unsigned mark = shown.shaped->visibleMarks[near_];
        nearest.isConstrained = (mark >> static_cast<unsigned>(nearest.edge.edge - 1) & 1U) != 0;
    }
    return nearest;
}

std::optional<HeldSide> FlippedSide(const ShownSurface& shown, const PickedSide& side) {
    const Triangle& triangle = shown.triangles.table[side.edge.triangle];
    const Index across = triangle.Neighbour(side.edge.edge);
    if (across < 1 || side.isConstrained) {
        return std::nullopt;
    }
    const Index from = triangle.Vertex(side.edge.edge);
    const Index to = triangle.Vertex(NextEdge(side.edge.edge));
    const Index left = triangle.Vertex(NextEdge(NextEdge(side.edge.edge)));
    Index right = 0;
    for (const Index corner : shown.triangles.table[across].vertices) {
        right = corner != from && corner != to ? corner : right;
    }
    Array1<PlanPoint> corners;
    for (const Index corner : {from, to, left, right}) {
        corners.Append(PlaceOf(shown.points, corner));
    }
    const ExactSigns signs(corners);
    const bool isConvex = signs.Turn(corners[4], corners[2], corners[3]) > 0 &&
                          signs.Turn(corners[3], corners[1], corners[4]) > 0;
    return isConvex ? std::optional(HeldSide{corners[3], corners[4]}) : std::nullopt;
}

} // namespace terravo
