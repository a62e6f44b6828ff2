#include "triangulation/modDelaunay2D.h"

#include "triangulation/MeshEdit.h"
#include "triangulation/WalkAhead.h"
#include "triangulation/modGeometria.h"

#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace terravo::modDelaunay2D {
namespace {

constexpr Index kProgressStride = 16384;

// One triangle of the fan about a new point m: (m, from, to), written to the given slot of the
// table. `outer` is the neighbour entry of its edge from -> to.
struct Spoke {
    Index slot = 0;
    Index from = 0;
    Index to = 0;
    Index outer = 0;
};

enum class Ring { Closed, Open };

// Inserts points one at a time; keeps the buffer for the hull edges that a point sees.
class Inserter {
public:
    explicit Inserter(Workspace& work) : work_(work) {}

    Index Insert(Index m, const WalkResult& place);

private:
    Index SplitInside(Index m, Index t);
    Index SplitOnEdge(Index m, Index t, int edge);
    Index SplitOnHullEdge(Index m, Index t, int edge);
    Index JoinFromOutside(Index m, TriangleEdge seen);
    Index WriteFan(Index m, std::span<const Spoke> spokes, Ring ring, Index linkAfter = 0);
    Index AddSlots(Index number);

    Workspace& work_;
    std::vector<Spoke> visible_;
};

// Reserves slots at the end of the table; returns the first, or 0 when the table is too small.
Index Inserter::AddSlots(Index number) {
    TriangleList& triangles = work_.triangles;
    if (number > triangles.table.UpperBound() - triangles.count) {
        return 0;
    }
    const Index first = triangles.count + 1;
    triangles.count += number;
    return first;
}

// Writes the triangles of a fan, counter-clockwise about m, repairs the links about them and puts
// them on the stack. An open fan has hull edges at both its ends: its last edge to m is followed by
// the first edge from m, and that one by `linkAfter`.
Index Inserter::WriteFan(Index m, std::span<const Spoke> spokes, Ring ring, Index linkAfter) {
    TriangleList& triangles = work_.triangles;
    const bool open = ring == Ring::Open;
    const TriangleEdge fromM{spokes.front().slot, 1};
    const TriangleEdge toM{spokes.back().slot, 3};
    for (std::size_t k = 0; k < spokes.size(); ++k) {
        const bool first = k == 0;
        const bool last = k + 1 == spokes.size();
        const Index before =
            first && open ? linkAfter : (first ? spokes.back() : spokes[k - 1]).slot;
        const Index after =
            last && open ? LinkToHullEdge(fromM) : (last ? spokes.front() : spokes[k + 1]).slot;
        triangles.table[spokes[k].slot] =
            Triangle{{m, spokes[k].from, spokes[k].to}, {before, spokes[k].outer, after}};
    }
    if (open) {
        NoteHullEdge(work_, fromM);
        NoteHullEdge(work_, toM);
    }
    for (const Spoke& spoke : spokes) {
        if (spoke.outer < 0) {
            NoteHullEdge(work_, {spoke.slot, 2});
        } else if (!RelinkNeighbour(triangles, {spoke.slot, 2})) {
            return Ierr::kBrokenLink;
        }
    }
    for (const Spoke& spoke : spokes) {
        if (spoke.outer < 0 && !LinkPredecessor(work_, {spoke.slot, 2})) {
            return Ierr::kBrokenLink;
        }
    }
    if (open && !(LinkPredecessor(work_, fromM) && LinkPredecessor(work_, toM))) {
        return Ierr::kBrokenLink;
    }
    for (const Spoke& spoke : spokes) {
        if (!work_.stack.Push(spoke.slot)) {
            return Ierr::kStackFull;
        }
    }
    return Ierr::kDone;
}

Index Inserter::SplitInside(Index m, Index t) {
    const Triangle old = work_.triangles.table[t];
    const Index slot = AddSlots(2);
    if (slot == 0) {
        return Ierr::kIndexOutOfRange;
    }
    const auto [a, b, c] = old.vertices;
    const std::array<Spoke, 3> spokes{Spoke{t, a, b, old.Neighbour(1)},
                                      Spoke{slot, b, c, old.Neighbour(2)},
                                      Spoke{slot + 1, c, a, old.Neighbour(3)}};
    return WriteFan(m, spokes, Ring::Closed);
}

// The edge runs from a to b; c is the corner opposite in t, d the one opposite across the edge.
Index Inserter::SplitOnEdge(Index m, Index t, int edge) {
    const Triangle old = work_.triangles.table[t];
    const Index u = old.Neighbour(edge);
    if (u <= 0) {
        return SplitOnHullEdge(m, t, edge);
    }
    if (u > work_.triangles.count) {
        return Ierr::kIndexOutOfRange;
    }
    const Triangle across = work_.triangles.table[u];
    const int edgeBc = NextEdge(edge);
    const int edgeCa = NextEdge(edgeBc);
    const Index a = old.Vertex(edge);
    const Index b = old.Vertex(edgeBc);
    const Index c = old.Vertex(edgeCa);
    const int shared = FindEdge(across, b, a);
    if (shared == 0 || across.Neighbour(shared) != t) {
        return Ierr::kBrokenLink;
    }
    const int edgeAd = NextEdge(shared);
    const int edgeDb = NextEdge(edgeAd);
    const Index d = across.Vertex(edgeDb);
    const Index slot = AddSlots(2);
    if (slot == 0) {
        return Ierr::kIndexOutOfRange;
    }
    const std::array<Spoke, 4> spokes{
        Spoke{t, b, c, old.Neighbour(edgeBc)}, Spoke{slot, c, a, old.Neighbour(edgeCa)},
        Spoke{u, a, d, across.Neighbour(edgeAd)}, Spoke{slot + 1, d, b, across.Neighbour(edgeDb)}};
    return WriteFan(m, spokes, Ring::Closed);
}

Index Inserter::SplitOnHullEdge(Index m, Index t, int edge) {
    const Triangle old = work_.triangles.table[t];
    const int edgeBc = NextEdge(edge);
    const int edgeCa = NextEdge(edgeBc);
    const Index slot = AddSlots(1);
    if (slot == 0) {
        return Ierr::kIndexOutOfRange;
    }
    const std::array<Spoke, 2> spokes{
        Spoke{t, old.Vertex(edgeBc), old.Vertex(edgeCa), old.Neighbour(edgeBc)},
        Spoke{slot, old.Vertex(edgeCa), old.Vertex(edge), old.Neighbour(edgeCa)}};
    return WriteFan(m, spokes, Ring::Open, old.Neighbour(edge));
}

// Seen from m the visible hull edges run clockwise, so the fan takes them from the last to the
// first.
Index Inserter::JoinFromOutside(Index m, TriangleEdge seen) {
    const VisibleRun run = VisibleBoundaryEdges(work_.coord[m], work_, seen);
    if (run.ierr != Ierr::kDone) {
        return run.ierr;
    }
    const TriangleList& triangles = work_.triangles;
    const Index linkAfter = triangles.Neighbour(run.last.edge, run.last.triangle);
    visible_.clear();
    for (TriangleEdge edge = run.last;;) {
        const Index start = triangles.Vertex(edge.edge, edge.triangle);
        const Index end = triangles.Vertex(NextEdge(edge.edge), edge.triangle);
        visible_.push_back({0, end, start, edge.triangle});
        if (edge == run.first) {
            break;
        }
        edge = HullEdgeFromLink(work_.hullEdgeInto[start]);
    }
    Index slot = AddSlots(static_cast<Index>(visible_.size()));
    if (slot == 0) {
        return Ierr::kIndexOutOfRange;
    }
    for (Spoke& spoke : visible_) {
        spoke.slot = slot++;
    }
    return WriteFan(m, visible_, Ring::Open, linkAfter);
}

Index Inserter::Insert(Index m, const WalkResult& place) {
    if (place.location >= 4) {
        return Ierr::kDone; // repeats a point that is already there
    }
    Index ierr = Ierr::kDone;
    if (place.location > 0) {
        ierr = SplitOnEdge(m, place.triangle, place.location);
    } else if (place.location < 0) {
        ierr = JoinFromOutside(m, {place.triangle, -place.location});
    } else {
        ierr = SplitInside(m, place.triangle);
    }
    return ierr != Ierr::kDone ? ierr : SwapEdges(m, work_);
}

// The smaller magnitude sets the tolerance, so a row counts only when both values are off zero.
bool AreDistinct(PlanPoint p, PlanPoint q) {
    const auto rowDiffers = [](double a, double b) {
        const double c = modUtilita::MinOfList({std::fabs(a), std::fabs(b)});
        return std::fabs(a - b) > modGeometria::kTolerance * c && c > modGeometria::kTolerance;
    };
    return rowDiffers(p.x, q.x) || rowDiffers(p.y, q.y);
}

// Position in the order of the first point off the line through the first two, and its side;
// position 0 when there is none.
struct ThirdPoint {
    Index position = 0;
    int side = 0;
};

ThirdPoint FindThirdPoint(const Array1<PlanPoint>& coord, const Array1<Index>& order) {
    const PlanPoint& p1 = coord[order[1]];
    const PlanPoint& p2 = coord[order[2]];
    for (Index i = 3; i <= order.UpperBound(); ++i) {
        const PlanPoint& p = coord[order[i]];
        const int side = modGeometria::SideOfLine(p.x, p.y, p1.x, p1.y, p2.x, p2.y, 0.0);
        if (side != 0) {
            return {i, side};
        }
    }
    return {};
}

void MakeFirstTriangle(Workspace& work, Index m1, Index m2, Index m3, int side) {
    TriangleList& triangles = work.triangles;
    triangles.count = 1;
    Triangle& first = triangles.table[1];
    first.vertices = side < 0 ? std::array{m1, m2, m3} : std::array{m2, m1, m3};
    first.neighbours = {-4, -5, -3};
    for (int j = 1; j <= 3; ++j) {
        NoteHullEdge(work, {1, j});
    }
}

// Where the walks start under StartRule::NearbyTriangle.
struct NearbyWalks {
    NearbyWalks(const Workspace& work, const Array1<Index>& order)
        : nearby(work.coord, work.triangles), ahead(work.coord, order, work.triangles, nearby) {}

    NearbyStart nearby;
    WalkAhead ahead;
};

// A walk from nearby that fails is repeated from the triangle made last, so that a set which the
// plain rule can handle never fails here.
WalkResult Locate(std::optional<NearbyWalks>& walks, const Workspace& work, PlanPoint point,
                  Index i) {
    if (walks) {
        const WalkResult place =
            WalkToPoint(point, work.coord, work.triangles, walks->ahead.StartFor(i));
        if (place.ierr == Ierr::kDone) {
            return place;
        }
    }
    return WalkToPoint(point, work.coord, work.triangles, work.triangles.count);
}

Index InsertRemaining(Workspace& work, const Array1<Index>& order, StartRule start,
                      const ProgressCallback& progress) {
    const Array1<PlanPoint>& coord = work.coord;
    Inserter inserter(work);
    std::optional<NearbyWalks> walks;
    if (start == StartRule::NearbyTriangle) {
        walks.emplace(work, order);
    }
    const Index count = order.UpperBound();
    for (Index i = 4; i <= count; ++i) {
        const PlanPoint& point = coord[order[i]];
        const WalkResult place = Locate(walks, work, point, i);
        // A walk that ran out leaves location 0: the point goes into the triangle it stopped in.
        if (place.ierr != Ierr::kDone && place.ierr != Ierr::kWalkRanOut) {
            return place.ierr;
        }
        const Index ierr = inserter.Insert(order[i], place);
        if (ierr != Ierr::kDone) {
            return ierr;
        }
        if (walks) {
            walks->nearby.Remember(point, place.triangle);
        }
        if (progress && i % kProgressStride == 0) {
            progress("triangulate", static_cast<double>(i) / static_cast<double>(count));
        }
    }
    return Ierr::kDone;
}

} // namespace

std::string DescribeIerr(Index ierr) {
    switch (ierr) {
    case Ierr::kDone:
        return {};
    case Ierr::kStackFull:
        return "the stack of triangles to test is full";
    case Ierr::kAllCollinear:
        return "all points lie on one line";
    case Ierr::kWalkRanOut:
        return "the search for a point's triangle did not end";
    case Ierr::kZeroDeterminant:
        return "a triangle has no area (its corners are too nearly on one line)";
    case Ierr::kIndexOutOfRange:
        return "a point or triangle number is out of range";
    case Ierr::kBrokenLink:
        return "two neighbouring triangles disagree (points too nearly on one line)";
    case Ierr::kOverflow:
        return "the coordinates are too large to compute with";
    default:
        return "unknown error";
    }
}

Index Triangulate(const Array1<PlanPoint>& coord, Array1<Index>& order, TriangleList& triangles,
                  StartRule start, const ProgressCallback& progress) {
    const Index n = order.UpperBound();
    constexpr Index kMostPoints = std::numeric_limits<Index>::max() / 6 - 1;
    if (n < 2) {
        return n == 0 ? Ierr::kDone : Ierr::kAllCollinear;
    }
    if (n > kMostPoints || n > coord.UpperBound() || triangles.table.UpperBound() < 2 * n) {
        return Ierr::kIndexOutOfRange; // a hull link holds three times a triangle number
    }
    if (!AreDistinct(coord[order[1]], coord[order[2]])) {
        return Ierr::kDone;
    }
    const ThirdPoint third = FindThirdPoint(coord, order);
    if (third.position == 0) {
        return Ierr::kAllCollinear;
    }
    std::swap(order[third.position], order[3]);
    Workspace work(coord, triangles, n);
    MakeFirstTriangle(work, order[1], order[2], order[3], third.side);
    const Index ierr = InsertRemaining(work, order, start, progress);
    std::swap(order[third.position], order[3]);
    return ierr;
}

} // namespace terravo::modDelaunay2D
