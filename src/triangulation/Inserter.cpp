#include "triangulation/Inserter.h"

namespace terravo::modDelaunay2D {

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

Index Inserter::MakeFan(Index m, const WalkResult& place) {
    if (place.location >= 4) {
        return Ierr::kDone; // repeats a point that is already there
    }
    if (place.location > 0) {
        return SplitOnEdge(m, place.triangle, place.location);
    }
    if (place.location < 0) {
        return JoinFromOutside(m, {place.triangle, -place.location});
    }
    return SplitInside(m, place.triangle);
}

} // namespace terravo::modDelaunay2D
