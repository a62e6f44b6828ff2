#include "survey/surface/SurfacePick.h"

#include "survey/SurfaceHeight.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

// @param side  edge side + 1 of the triangle.
std::optional<HeldSide> Flipped(const TriangleHere& here, std::size_t side) {
    if (here.isConstrained[side] || !here.beyond[side]) {
        return std::nullopt;
    }
    const Array1<PlanPoint> corners{PlanOf(here.corners[side]),
                                    PlanOf(here.corners[(side + 1) % 3]),
                                    PlanOf(here.corners[(side + 2) % 3]), *here.beyond[side]};
    const ExactSigns signs(corners);
    const bool isConvex = signs.Turn(corners[4], corners[2], corners[3]) > 0 &&
                          signs.Turn(corners[3], corners[1], corners[4]) > 0;
    return isConvex ? std::optional(HeldSide{corners[3], corners[4]}) : std::nullopt;
}

double TwiceArea(PlanPoint a, PlanPoint b, PlanPoint c) {
    return (a.x - c.x) * (b.y - c.y) - (a.y - c.y) * (b.x - c.x);
}

} // namespace

// Beside the surface the walk ends at its rim, where a point may be in reach all the same.
std::optional<TriangleHere> SurfacePick::ShownTriangleAt(PlanPoint place) {
    const ShownSurface shown = survey_.Surface();
    const bool holds = SurfaceHeight(shown.points, shown.triangles, place, near_).has_value();
    if (near_ < 1 || near_ > shown.triangles.count) {
        return std::nullopt;
    }
    const Triangle& triangle = shown.triangles.table[near_];
    TriangleHere here;
    here.holdsPlace = holds;
    for (int j = 1; j <= 3; ++j) {
        const auto i = static_cast<std::size_t>(j) - 1;
        const Index corner = triangle.Vertex(j);
        here.numbers[i] = corner <= shown.SurveyedPoints() ? survey_.NumberAmongAll(corner) : 0;
        here.corners[i] = {shown.points.x[corner], shown.points.y[corner], shown.points.z[corner]};
        if (shown.shaped != nullptr) {
            const unsigned mark = shown.shaped->visibleMarks[near_];
            here.isConstrained[i] = (mark >> i & 1U) != 0;
        }
        if (const Index across = triangle.Neighbour(j); across > 0) {
            for (const Index far : shown.triangles.table[across].vertices) {
                if (far != corner && far != triangle.Vertex(NextEdge(j))) {
                    here.beyond[i] = PlanPoint{shown.points.x[far], shown.points.y[far]};
                }
            }
        }
    }
    return here;
}

std::optional<TriangleHere> SurfacePick::TriangleAt(PlanPoint place) {
    const bool isAhead = live_ != nullptr && *live_ != nullptr && (*live_)->Holds();
    return isAhead ? (*live_)->At(place) : ShownTriangleAt(place);
}

std::optional<double> SurfacePick::HeightAt(PlanPoint place) {
    const std::optional<TriangleHere> here = TriangleAt(place);
    if (!here || !here->holdsPlace) {
        return std::nullopt;
    }
    const auto& [a, b, c] = here->corners;
    const double atA = TwiceArea(PlanOf(b), PlanOf(c), place);
    const double atB = TwiceArea(PlanOf(c), PlanOf(a), place);
    const double atC = TwiceArea(PlanOf(a), PlanOf(b), place);
    const double height = (atA * a.z + atB * b.z + atC * c.z) / (atA + atB + atC);
    return std::isfinite(height) ? std::optional(height) : std::nullopt;
}

std::optional<PickedPoint> SurfacePick::PointAt(PlanPoint place, double reach) {
    const std::optional<TriangleHere> here = TriangleAt(place);
    std::optional<PickedPoint> nearest;
    double least = reach;
    for (std::size_t i = 0; here && i < 3; ++i) {
        const SpacePoint& p = here->corners[i];
        const double distance = std::hypot(p.x - place.x, p.y - place.y);
        if (distance <= least) {
            least = distance;
            nearest = {p, here->numbers[i]};
        }
    }
    return nearest;
}

std::optional<PickedSide> SurfacePick::SideAt(PlanPoint place) {
    const std::optional<TriangleHere> here = TriangleAt(place);
    if (!here || !here->holdsPlace) {
        return std::nullopt;
    }
    std::size_t nearest = 0;
    double least = std::numeric_limits<double>::infinity();
    const auto ends = [&here](std::size_t side) {
        return std::pair(PlanOf(here->corners[side]), PlanOf(here->corners[(side + 1) % 3]));
    };
    for (std::size_t i = 0; i < 3; ++i) {
        const auto [a, b] = ends(i);
        if (const double distance = DistanceToSide(a, b, place); distance < least) {
            least = distance;
            nearest = i;
        }
    }
    const auto [from, to] = ends(nearest);
    return PickedSide{from, to, here->isConstrained[nearest], Flipped(*here, nearest)};
}

} // namespace terravo
