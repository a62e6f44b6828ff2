#include "analysis/MeasuredPolygon.h"

#include "analysis/FaceMesh.h"
#include "triangulation/TriangulatePoints.h"
#include "triangulation/constrained/VisibleSurface.h"
#include "triangulation/modDelaunay2D.h"

namespace terravo {
namespace {

// The vertices of all rings, and the rings of heights 0.
struct LaidRings {
    Array1<PlanPoint> places;
    SurfaceConstraints constraints;
};

LaidRings Lay(PlanPoint origin, const std::vector<PlanRing>& rings) {
    LaidRings laid;
    laid.constraints.vertexTolerance = 0;
    for (const PlanRing& ring : rings) {
        SpaceLine line;
        line.closed = true;
        for (const PlanPoint& vertex : ring) {
            const PlanPoint place{vertex.x - origin.x, vertex.y - origin.y};
            laid.places.Append(place);
            line.vertices.push_back({place.x, place.y, 0});
        }
        laid.constraints.boundary.push_back(std::move(line));
    }
    return laid;
}

Text SentenceOf(const SurfaceRemark& remark) {
    switch (remark.kind) {
    case SurfaceRemarkKind::TooShort:
        return Text::PolygonTooFew;
    case SurfaceRemarkKind::CrossesItself:
        return Text::PolygonCrosses;
    default:
        return Text::PolygonNotLaid;
    }
}

} // namespace

PolygonReading MakePolygon(PlanPoint origin, const std::vector<PlanRing>& rings) {
    PolygonReading reading;
    reading.ground.origin = origin;
    const LaidRings laid = Lay(origin, rings);
    const TriangulationOutcome base = TriangulatePoints(laid.places, {.exact = true});
    if (base.ierr != modDelaunay2D::Ierr::kDone || base.triangles.count == 0) {
        reading.failure = Text::PolygonNoArea;
        return reading;
    }
    const Array1<double> heights(laid.places.UpperBound(), 0);
    const ConstrainedSurface surface =
        MakeConstrainedSurface(laid.places, heights, base.triangles, laid.constraints);
    if (surface.lines.size() < rings.size()) {
        reading.failure =
            surface.remarks.empty() ? Text::PolygonNotLaid : SentenceOf(surface.remarks.front());
        return reading;
    }
    for (const PlanPoint& place : laid.places) {
        reading.ground.corners.Append({place.x, place.y, 0});
    }
    for (const SpacePoint& added : surface.added) {
        reading.ground.corners.Append(added);
    }
    reading.ground.triangles = VisibleTriangles(surface.triangles, HideByRings(surface));
    if (reading.ground.triangles.count == 0) {
        reading.failure = Text::PolygonNoArea;
    }
    return reading;
}

MeasuredSurface CutByPolygon(const MeasuredSurface& surface, const MeasuredSurface& polygon,
                             const StopToken& stop) {
    return MeshOfFaces(surface, polygon, FaceHeight::First, stop);
}

} // namespace terravo
