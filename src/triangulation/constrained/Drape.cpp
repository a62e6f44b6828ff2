// Lines without heights, laid on the surface as it is.
//
// Wherever the line crosses a side of a triangle a point is put on that side, and all sides of the
// triangles that it crosses are held, so that the new points divide flat triangles and nothing
// else. Outside the convex hull there is no surface, and nothing is laid.
#include "triangulation/constrained/ConstraintLayer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

constexpr std::int64_t kMostOnHull = 1000; // crossings by rounding

double Distance(PlanPoint a, PlanPoint b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

double SignedArea(PlanPoint a, PlanPoint b, PlanPoint c) {
    return (a.x - c.x) * (b.y - c.y) - (a.y - c.y) * (b.x - c.x);
}

} // namespace

double ConstraintLayer::HeightIn(Index triangle, PlanPoint place) const {
    const auto& [a, b, c] = inserter_.Triangles().table[triangle].vertices;
    const PlanPoint& pa = mesh_.Position(a);
    const PlanPoint& pb = mesh_.Position(b);
    const PlanPoint& pc = mesh_.Position(c);
    const double whole = SignedArea(pa, pb, pc);
    const double toB = whole > 0 ? std::clamp(SignedArea(pa, place, pc) / whole, 0.0, 1.0) : 0;
    const double toC = whole > 0 ? std::clamp(SignedArea(pa, pb, place) / whole, 0.0, 1.0) : 0;
    return Height(a) + toB * (Height(b) - Height(a)) + toC * (Height(c) - Height(a));
}

void ConstraintLayer::HoldSides(Index triangle) {
    for (int j = 1; j <= 3; ++j) {
        if (!inserter_.IsConstrained({triangle, j})) {
            inserter_.Constrain({triangle, j});
            pieces_.Claim(inserter_.Triangles().Vertex(j, triangle),
                          inserter_.Triangles().Vertex(NextEdge(j), triangle), kNoLine);
        }
    }
}

/// @return 0 outside the hull.
Index ConstraintLayer::DrapedVertex(const SpacePoint& vertex) {
    const PlanPoint position = PlanOf(vertex);
    const MeshPlace place = inserter_.Locate(position, StartNear(position));
    const Index nearest = inserter_.Nearest(position, place);
    if (IsNear(nearest, position)) {
        return nearest;
    }
    if (place.location < 0) {
        return VertexOnHull(position);
    }
    const double height = HeightIn(place.triangle, position);
    HoldSides(place.triangle);
    if (place.location > 0 && !inserter_.IsHullEdge({place.triangle, place.location})) {
        HoldSides(inserter_.Across({place.triangle, place.location}).triangle);
    }
    return PutNew(position, place, height, kNoLine);
}

// A vertex that lies outside by rounding, or by less than the tolerance, is a point of the hull.
Index ConstraintLayer::VertexOnHull(PlanPoint position) {
    constexpr double kRounding = 1e-12;
    const double reach =
        std::max(constraints_.vertexTolerance,
                 kRounding * std::max(std::fabs(position.x), std::fabs(position.y)));
    const TriangleEdge first = inserter_.AnyHullEdge();
    TriangleEdge edge = first;
    do {
        const Triangle& triangle = inserter_.Triangles().table[edge.triangle];
        const Index p = triangle.Vertex(edge.edge);
        const Index q = triangle.Vertex(NextEdge(edge.edge));
        const GivenSide side = SideBetween(p, q);
        const double part = side.PartAt(position);
        if (part >= 0 && part <= 1 && side.DistanceTo(position) <= reach) {
            HoldSides(edge.triangle);
            return DivideEdge(p, q, position, side.HeightAt(position), 0);
        }
        edge = HullEdgeFromLink(triangle.Neighbour(edge.edge));
    } while (!(edge == first));
    return 0;
}

ConstraintLayer::Result ConstraintLayer::Drape(LineNumber number) {
    const LineToLay& line = lines_[number];
    std::vector<Index> corners;
    budget_ = kMostOnHull;
    for (const SpacePoint& vertex : line.vertices) {
        corners.push_back(DrapedVertex(vertex));
        if (corners.back() == 0) {
            reachesOutside_[number] = 1;
        }
    }
    for (std::size_t i = 0; i < line.SideCount(); ++i) {
        const Index last = corners[i + 1 == corners.size() ? 0 : i + 1];
        if (!DrapeSide(line.vertices[i], line.EndOfSide(i), corners[i], last, number,
                       chains_[number]) ||
            isHalfLaid_) {
            Refuse(number, RemarkOn(SurfaceRemarkKind::NotFinished, number,
                                    PlanOf(line.vertices[i]), kNoHeight));
            return Result::Unfinished;
        }
        sides_[number].push_back(
            {PlanOf(line.vertices[i]), PlanOf(line.EndOfSide(i)), chains_[number].size()});
    }
    return Result::Laid;
}

bool ConstraintLayer::DrapeSide(const SpacePoint& from, const SpacePoint& to, Index first,
                                Index last, LineNumber line, PieceChain& chain) {
    if (first == 0 || last == 0) {
        const std::array<Index, 2> crossings = HullCrossings(PlanOf(from), PlanOf(to));
        // A side that leaves the surface where it begins leaves it at that point.
        const Index in = first == 0 ? crossings[0] : first;
        const Index out = last == 0 ? crossings[1] : last;
        if (first == 0) {
            outlets_.push_back({line, in != 0 ? in : out, PlanOf(from)});
        }
        if (last == 0) {
            outlets_.push_back({line, out != 0 ? out : in, PlanOf(to)});
        }
        first = in;
        last = out;
    }
    return first == 0 || last == 0 || first == last || DrapeBetween(first, last, line, chain);
}

// Each step comes nearer to the end, or the budget ends it.
bool ConstraintLayer::DrapeBetween(Index from, Index to, LineNumber line, PieceChain& chain) {
    budget_ = 64;
    for (Index current = from; current != to;) {
        const SegmentInserter::Start start = inserter_.Leave(current, to);
        if (start.way != SegmentInserter::Way::Across) {
            break;
        }
        current = inserter_.Follow(current, to, start.edge, [this](const auto&, TriangleEdge) {
            budget_ += 8;
            return true;
        });
    }
    for (Index current = from; current != to;) {
        const SegmentInserter::Start start = inserter_.Leave(current, to);
        if (start.way == SegmentInserter::Way::Edge) {
            ClaimEdge(current, start.to, start.edge, line, chain);
            current = start.to;
            continue;
        }
        if (start.way == SegmentInserter::Way::None || --budget_ < 0) {
            return false;
        }
        if (current == from) {
            HoldSides(start.edge.triangle);
        }
        HoldSides(inserter_.Across(start.edge).triangle);
        const Index next = DrapeAcross(current, to, start.edge);
        if (next == 0 || !Lay(current, next, {SideBetween(current, next), line, 1}, chain)) {
            return false;
        }
        current = next;
    }
    return true;
}

/// @return the point where the way from one point to another crosses a side; 0 when it cannot be
///         made.
Index ConstraintLayer::DrapeAcross(Index from, Index to, TriangleEdge edge) {
    const Index p = inserter_.Triangles().Vertex(edge.edge, edge.triangle);
    const Index q = inserter_.Triangles().Vertex(NextEdge(edge.edge), edge.triangle);
    const PlanPoint& a = mesh_.Position(from);
    const PlanPoint& b = mesh_.Position(to);
    const PlanPoint place = CrossingOf(a, b, mesh_.Position(p), mesh_.Position(q));
    for (const Index end : {p, q}) {
        if (IsNear(end, place) && Distance(mesh_.Position(end), b) < Distance(a, b)) {
            return end;
        }
    }
    return DivideEdge(p, q, place, SideBetween(p, q).HeightAt(place), 0);
}

// ---- The hull
// ------------------------------------------------------------------------------------

/// @return the points of the hull at which a side comes in from outside and leaves again; 0 for one
///         that there is not. The ends of the side have been located.
std::array<Index, 2> ConstraintLayer::HullCrossings(PlanPoint from, PlanPoint to) {
    struct Found {
        Index p = 0;
        Index q = 0;
    };
    std::array<Found, 2> found;
    const TriangleEdge first = inserter_.AnyHullEdge();
    TriangleEdge edge = first;
    do {
        const Triangle& triangle = inserter_.Triangles().table[edge.triangle];
        const Index p = triangle.Vertex(edge.edge);
        const Index q = triangle.Vertex(NextEdge(edge.edge));
        const PlanPoint& pp = mesh_.Position(p);
        const PlanPoint& pq = mesh_.Position(q);
        const int sideOfFrom = inserter_.Turn(pp, pq, from);
        const int sideOfTo = inserter_.Turn(pp, pq, to);
        if (sideOfFrom * sideOfTo < 0 &&
            inserter_.Turn(from, to, pp) * inserter_.Turn(from, to, pq) <= 0) {
            found[sideOfFrom < 0 ? 0 : 1] = {p, q};
        }
        edge = HullEdgeFromLink(triangle.Neighbour(edge.edge));
    } while (!(edge == first));
    std::array<Index, 2> points{};
    for (std::size_t k = 0; k < 2; ++k) {
        if (found[k].p != 0) {
            points[k] = PutOnHull(found[k].p, found[k].q, from, to);
        }
    }
    return points;
}

// The point may lie outside the edge by rounding, but never inside: the ring then would not reach
// the hull.
Index ConstraintLayer::PutOnHull(Index p, Index q, PlanPoint from, PlanPoint to) {
    const PlanPoint& a = mesh_.Position(p);
    const PlanPoint& b = mesh_.Position(q);
    const PlanPoint exact = CrossingOf(from, to, a, b);
    if (IsNear(p, exact) || IsNear(q, exact)) {
        return IsNear(p, exact) ? p : q;
    }
    const double length = Distance(a, b);
    const double ulp =
        std::numeric_limits<double>::epsilon() * std::max(std::fabs(exact.x), std::fabs(exact.y));
    PlanPoint place = exact;
    inserter_.Admit(place);
    for (double out = ulp; inserter_.Turn(a, b, place) > 0; out *= 2) {
        place = {exact.x + out * (b.y - a.y) / length, exact.y - out * (b.x - a.x) / length};
        inserter_.Admit(place);
    }
    const double height = SideBetween(p, q).HeightAt(exact);
    HoldSides(inserter_.FindEdge(p, q).triangle);
    return DivideEdge(p, q, place, height, 0);
}

// A point that was put on the hull by an earlier line may lie behind points that came later, by
// rounding. The ring is then led along the edges of those flat triangles to the hull.
void ConstraintLayer::ReachHull() {
    constexpr int kMostSteps = 100;
    for (const Outlet& outlet : outlets_) {
        if (outlet.point == 0 || lines_[outlet.line].role == LineRole::Breakline) {
            continue;
        }
        Index at = outlet.point;
        for (int steps = 0; !inserter_.IsOnHull(at) && steps < kMostSteps; ++steps) {
            const Index cover = CoveringHullPoint(at);
            const Index next = cover != 0 ? cover : StepOut(at, outlet.outside);
            if (next == 0) {
                break;
            }
            ClaimEdge(at, next, inserter_.FindEdge(at, next), kNoLine, chains_[outlet.line]);
            at = next;
        }
    }
}

/// @return an end of the nearest hull edge that makes a triangle with the point; 0 for none.
Index ConstraintLayer::CoveringHullPoint(Index point) const {
    Index end = 0;
    double least = std::numeric_limits<double>::infinity();
    inserter_.AroundPoint(point, [&](Index t, int edge) {
        const TriangleEdge opposite{t, NextEdge(edge)};
        if (inserter_.IsHullEdge(opposite)) {
            const Index right = inserter_.Triangles().Vertex(opposite.edge, t);
            const Index left = inserter_.Triangles().Vertex(NextEdge(opposite.edge), t);
            const double distance = SideBetween(right, left).DistanceTo(mesh_.Position(point));
            if (distance < least) {
                least = distance;
                end = right;
            }
        }
        return true;
    });
    return end;
}

/// @return the neighbour along which the way out runs, or the first one on its right; 0 when there
///         is none.
Index ConstraintLayer::StepOut(Index from, PlanPoint outside) const {
    Index next = 0;
    const PlanPoint& origin = mesh_.Position(from);
    inserter_.AroundPoint(from, [&](Index t, int edge) {
        const Index right = inserter_.Triangles().Vertex(NextEdge(edge), t);
        const Index left = inserter_.Triangles().Vertex(PreviousEdge(edge), t);
        if (inserter_.Turn(origin, mesh_.Position(right), outside) >= 0 &&
            inserter_.Turn(origin, mesh_.Position(left), outside) < 0) {
            next = right;
        }
        return next == 0;
    });
    return next;
}

} // namespace terravo
