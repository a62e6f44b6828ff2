#include "triangulation/exact/ExactMesh.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace terravo {
namespace {

constexpr int EdgeBefore(int edge) {
    return edge == 1 ? 3 : edge - 1;
}

// The vertex of a triangle that two different edges share.
int SharedVertex(int edge, int other) {
    return NextEdge(edge) == other ? other : edge;
}

constexpr int kOpposite = 2; // the edge opposite the new point, which is vertex 1

} // namespace

ExactMesh::ExactMesh(Array1<PlanPoint> points, Array1<Index> ranks)
    : points_(std::move(points)), ranks_(std::move(ranks)), signs_(points_),
      triangles_(points_.UpperBound()), triangleOf_(points_.UpperBound()),
      hullInto_(points_.UpperBound()), marks_(triangles_.table.UpperBound()) {}

ExactMesh::ExactMesh(Array1<PlanPoint> points, Array1<Index> ranks, TriangleList triangles)
    : points_(std::move(points)), ranks_(std::move(ranks)), signs_(points_),
      triangles_(std::move(triangles)), triangleOf_(points_.UpperBound()),
      hullInto_(points_.UpperBound()), marks_(triangles_.table.UpperBound()),
      site_(triangles_.count) {
    for (Index t = 1; t <= triangles_.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            triangleOf_[triangles_.Vertex(j, t)] = t;
            if (triangles_.Neighbour(j, t) < 0) {
                NoteHullEdge({t, j});
            }
        }
    }
    site_.walkFrom_ = triangles_.count;
}

Index ExactMesh::Append(PlanPoint position, Index rank) {
    signs_.Admit(position);
    points_.Append(position);
    ranks_.Append(rank);
    triangleOf_.Append(0);
    hullInto_.Append(0);
    return points_.UpperBound();
}

void ExactMesh::Begin(Site& site, Index a, Index b, Index c) {
    if (Turn(a, b, c) < 0) {
        std::swap(b, c);
    }
    const Index t = NewTriangle(site);
    triangles_.table[t] = {
        {a, b, c}, {LinkToHullEdge({t, 2}), LinkToHullEdge({t, 3}), LinkToHullEdge({t, 1})}};
    for (int j = 1; j <= 3; ++j) {
        NoteHullEdge({t, j});
        triangleOf_[triangles_.Vertex(j, t)] = t;
    }
    site.walkFrom_ = t;
}

// Where every edge has an empty circle a walk cannot come back to a triangle. With constraints it
// can, and goes round for ever if it always tests the edges in the same order.
int ExactMesh::FirstEdge(Site& site, int crossed) const {
    if (!hasConstraints_) {
        return crossed == 0 ? 1 : NextEdge(crossed);
    }
    site.random_ = site.random_ * 1664525U + 1013904223U;
    return static_cast<int>((site.random_ >> 16U) % 3U) + 1;
}

// The edge that was crossed last is not tested again: the position lies strictly on this side.
MeshPlace ExactMesh::Locate(Site& site, PlanPoint position, Index start) const {
    Index t = start;
    int crossed = 0;
    for (;;) {
        const Triangle& triangle = triangles_.table[t];
        int edge = FirstEdge(site, crossed);
        int beyond = 0;
        int on = 0;
        int alsoOn = 0;
        for (int k = 1; k <= 3; ++k, edge = NextEdge(edge)) {
            if (edge == crossed) {
                continue;
            }
            const int side = signs_.Turn(points_[triangle.Vertex(edge)],
                                         points_[triangle.Vertex(NextEdge(edge))], position);
            if (side < 0) {
                beyond = edge;
                break;
            }
            if (side == 0) {
                alsoOn = on;
                on = edge;
            }
        }
        if (beyond == 0) {
            return {t, alsoOn == 0 ? on : 3 + SharedVertex(alsoOn, on)};
        }
        const Index next = triangle.Neighbour(beyond);
        if (next < 0) {
            return {t, -beyond};
        }
        crossed = EdgeFrom(triangles_.table[next], triangle.Vertex(NextEdge(beyond)));
        t = next;
        ++site.effort_;
    }
}

void ExactMesh::Insert(Site& site, Index point) {
    const MeshPlace place = Locate(site, points_[point], site.walkFrom_);
    site.walkFrom_ = place.triangle;
    ++site.effort_;
    if (place.location < 4) {
        PutAt(site, point, place);
        SwapAbout(site);
    }
}

void ExactMesh::PutAt(Site& site, Index point, const MeshPlace& place) {
    site.fan_.clear();
    if (place.location == 0) {
        SplitInside(site, point, place.triangle);
    } else if (place.location > 0) {
        SplitOnEdge(site, point, place.triangle, place.location);
    } else {
        JoinFromOutside(site, point, {place.triangle, -place.location});
    }
}

Index ExactMesh::NewTriangle(Site& site) {
    const Index slot = ++site.lastUsed_;
    if (slot > triangles_.table.UpperBound()) {
        triangles_.table.Resize(slot + slot / 2);
        marks_.Resize(triangles_.table.UpperBound());
    }
    return slot;
}

void ExactMesh::SplitInside(Site& site, Index m, Index t) {
    const Triangle old = triangles_.table[t];
    const Mark mark = marks_[t];
    for (int j = 1; j <= 3; ++j) {
        site.fan_.push_back({j == 1 ? t : NewTriangle(site), old.Vertex(j), old.Vertex(NextEdge(j)),
                             old.Neighbour(j), Moved(mark, j, kOpposite)});
    }
    WriteFan(site, m, Ring::Closed, 0);
}

// The edge runs from a to b; c is the corner opposite in t, d the one opposite across the edge.
// Where it is constrained, so are the spokes to a and b: edge 1 of the fan's triangles that begin
// there, edge 3 of those that end there.
void ExactMesh::SplitOnEdge(Site& site, Index m, Index t, int edge) {
    const Triangle old = triangles_.table[t];
    const Mark mark = marks_[t];
    const int bc = NextEdge(edge);
    const int ca = NextEdge(bc);
    const Index a = old.Vertex(edge);
    const Index b = old.Vertex(bc);
    const Index c = old.Vertex(ca);
    const auto with = [](Mark first, Mark second) { return static_cast<Mark>(first | second); };
    const Mark begins = Moved(mark, edge, 1);
    const Mark ends = Moved(mark, edge, 3);
    site.fan_.push_back({t, b, c, old.Neighbour(bc), with(Moved(mark, bc, kOpposite), begins)});
    site.fan_.push_back(
        {NewTriangle(site), c, a, old.Neighbour(ca), with(Moved(mark, ca, kOpposite), ends)});
    const Index u = old.Neighbour(edge);
    if (u < 0) {
        WriteFan(site, m, Ring::Open, u);
        return;
    }
    const Triangle across = triangles_.table[u];
    const Mark acrossMark = marks_[u];
    const int ad = NextEdge(EdgeFrom(across, b));
    const int db = NextEdge(ad);
    const Index d = across.Vertex(db);
    site.fan_.push_back(
        {u, a, d, across.Neighbour(ad), with(Moved(acrossMark, ad, kOpposite), begins)});
    site.fan_.push_back({NewTriangle(site), d, b, across.Neighbour(db),
                         with(Moved(acrossMark, db, kOpposite), ends)});
    WriteFan(site, m, Ring::Closed, 0);
}

bool ExactMesh::IsSeen(Index m, TriangleEdge edge) const {
    const Triangle& triangle = triangles_.table[edge.triangle];
    return Turn(triangle.Vertex(edge.edge), triangle.Vertex(NextEdge(edge.edge)), m) < 0;
}

// Seen from m the visible hull edges run clockwise, so the fan takes them from the last to the
// first.
void ExactMesh::JoinFromOutside(Site& site, Index m, TriangleEdge seen) {
    const auto startOf = [this](TriangleEdge edge) {
        return triangles_.Vertex(edge.edge, edge.triangle);
    };
    TriangleEdge last = seen;
    Index after = triangles_.Neighbour(last.edge, last.triangle);
    while (IsSeen(m, HullEdgeFromLink(after))) {
        last = HullEdgeFromLink(after);
        after = triangles_.Neighbour(last.edge, last.triangle);
        ++site.effort_;
    }
    TriangleEdge edge = last;
    bool isPastSeen = false;
    for (;;) {
        const Triangle& triangle = triangles_.table[edge.triangle];
        site.fan_.push_back({0, triangle.Vertex(NextEdge(edge.edge)), triangle.Vertex(edge.edge),
                             edge.triangle, Moved(marks_[edge.triangle], edge.edge, kOpposite)});
        isPastSeen = isPastSeen || edge == seen;
        const TriangleEdge before = HullEdgeInto(startOf(edge));
        if (isPastSeen && !IsSeen(m, before)) {
            break;
        }
        hullInto_[startOf(edge)] = 0; // it comes to lie inside
        edge = before;
        ++site.effort_;
    }
    for (Site::Spoke& spoke : site.fan_) {
        spoke.slot = NewTriangle(site);
    }
    WriteFan(site, m, Ring::Open, after);
}

// Triangle (m, from, to) has the spoke m -> from as edge 1, from -> to as edge 2, to -> m as
// edge 3. An open fan is bounded by the hull edges m -> first and last -> m.
void ExactMesh::WriteFan(Site& site, Index m, Ring ring, Index linkAfter) {
    const bool open = ring == Ring::Open;
    const TriangleEdge fromM{site.fan_.front().slot, 1};
    const TriangleEdge toM{site.fan_.back().slot, 3};
    for (std::size_t k = 0; k < site.fan_.size(); ++k) {
        const Site::Spoke& spoke = site.fan_[k];
        const bool isFirst = k == 0;
        const bool isLast = k + 1 == site.fan_.size();
        const Index before =
            isFirst ? (open ? linkAfter : site.fan_.back().slot) : site.fan_[k - 1].slot;
        const Index after = isLast ? (open ? LinkToHullEdge(fromM) : site.fan_.front().slot)
                                   : site.fan_[k + 1].slot;
        // Seen from m the fan runs counter-clockwise: the spoke to `from` is shared with the one
        // before.
        triangles_.table[spoke.slot] = {{m, spoke.from, spoke.to}, {before, spoke.outer, after}};
        marks_[spoke.slot] = spoke.mark;
        triangleOf_[spoke.from] = spoke.slot;
        triangleOf_[spoke.to] = spoke.slot;
        site.stack_.push_back(spoke.slot);
    }
    triangleOf_[m] = site.fan_.front().slot;
    if (open) {
        NoteHullEdge(fromM);
        NoteHullEdge(toM);
    }
    for (const Site::Spoke& spoke : site.fan_) {
        spoke.outer < 0 ? NoteHullEdge({spoke.slot, kOpposite}) : Relink({spoke.slot, kOpposite});
    }
    for (const Site::Spoke& spoke : site.fan_) {
        if (spoke.outer < 0) {
            LinkPredecessor({spoke.slot, kOpposite});
        }
    }
    if (open) {
        LinkPredecessor(fromM);
        LinkPredecessor(toM);
    }
}

// True when the diagonal b-c of the quadrilateral m, b, d, c gives way to m-d.
bool ExactMesh::GivesWay(Index b, Index c, Index m, Index d) const {
    const int side = signs_.Circle(points_[m], points_[b], points_[c], points_[d]);
    if (side != 0) {
        return side > 0;
    }
    return std::max(ranks_[b], ranks_[c]) > std::max(ranks_[m], ranks_[d]);
}

// A swap leaves two edges to be tested: one at once, the other from the stack.
void ExactMesh::SwapAbout(Site& site) {
    while (!site.stack_.empty()) {
        const Index t = site.stack_.back();
        site.stack_.pop_back();
        for (;;) {
            const Triangle& triangle = triangles_.table[t];
            const Index u = triangle.Neighbour(kOpposite);
            if (u < 0 || (hasConstraints_ && IsConstrained({t, kOpposite}))) {
                break;
            }
            const auto [m, b, c] = triangle.vertices;
            const Triangle& across = triangles_.table[u];
            const int shared = EdgeFrom(across, c);
            if (!GivesWay(b, c, m, across.Vertex(EdgeBefore(shared)))) {
                break;
            }
            Swap(t, u, shared);
            ++site.effort_;
            site.stack_.push_back(u);
        }
    }
}

// t = (m, b, c) and u = (.., c, b, d) become t = (m, b, d) and u = (m, d, c).
inline void ExactMesh::Swap(Index t, Index u, int shared) {
    Triangle& first = triangles_.table[t];
    Triangle& second = triangles_.table[u];
    const auto [m, b, c] = first.vertices;
    const int bd = NextEdge(shared);
    const int dc = EdgeBefore(shared);
    const Index d = second.Vertex(dc);
    const Index acrossCm = first.Neighbour(3);
    const Index acrossBd = second.Neighbour(bd);
    const Index acrossDc = second.Neighbour(dc);
    first = {{m, b, d}, {first.Neighbour(1), acrossBd, u}};
    second = {{m, d, c}, {t, acrossDc, acrossCm}};
    triangleOf_[b] = t;
    triangleOf_[c] = u;
    if (hasConstraints_) {
        const Mark mark = marks_[t];
        marks_[t] = static_cast<Mark>(Moved(mark, 1, 1) | Moved(marks_[u], bd, kOpposite));
        marks_[u] = static_cast<Mark>(Moved(marks_[u], dc, kOpposite) | Moved(mark, 3, 3));
    }
    acrossBd > 0 ? Relink({t, kOpposite}) : NoteHullEdge({t, kOpposite});
    if (acrossDc < 0) {
        NoteHullEdge({u, kOpposite});
    }
    acrossCm > 0 ? Relink({u, 3}) : NoteHullEdge({u, 3});
    if (acrossBd < 0) {
        LinkPredecessor({t, kOpposite});
    }
    if (acrossDc < 0) {
        LinkPredecessor({u, kOpposite});
    }
    if (acrossCm < 0) {
        LinkPredecessor({u, 3});
    }
}

// Swap is inlined where points are put in, and nowhere else to be called.
void ExactMesh::SwapForOthers(Index t, Index u, int shared) {
    Swap(t, u, shared);
}

// The triangle across a moved edge points back to it.
void ExactMesh::Relink(TriangleEdge moved) {
    const Triangle& triangle = triangles_.table[moved.triangle];
    Triangle& across = triangles_.table[triangle.Neighbour(moved.edge)];
    across.SetNeighbour(EdgeFrom(across, triangle.Vertex(NextEdge(moved.edge))), moved.triangle);
}

// The end of a moved hull edge learns where the edge is now.
void ExactMesh::NoteHullEdge(TriangleEdge moved) {
    hullInto_[triangles_.Vertex(NextEdge(moved.edge), moved.triangle)] = LinkToHullEdge(moved);
}

// The predecessor of a moved hull edge points to it.
void ExactMesh::LinkPredecessor(TriangleEdge moved) {
    const TriangleEdge before = HullEdgeInto(triangles_.Vertex(moved.edge, moved.triangle));
    triangles_.table[before.triangle].SetNeighbour(before.edge, LinkToHullEdge(moved));
}

void ExactMesh::CloseGaps(std::vector<Index> freeSlots) {
    std::sort(freeSlots.begin(), freeSlots.end());
    Index last = triangles_.table.UpperBound();
    triangles_.count = last - static_cast<Index>(freeSlots.size());
    auto lastFree = freeSlots.end();
    for (const Index gap : freeSlots) {
        for (; lastFree != freeSlots.begin() && *std::prev(lastFree) == last; --lastFree) {
            --last;
        }
        if (gap > triangles_.count) {
            break;
        }
        Move(last--, gap);
    }
}

void ExactMesh::Move(Index from, Index to) {
    const Triangle& triangle = triangles_.table[to] = triangles_.table[from];
    marks_[to] = marks_[from];
    for (int j = 1; j <= 3; ++j) {
        triangleOf_[triangle.Vertex(j)] = to;
        triangle.Neighbour(j) < 0 ? NoteHullEdge({to, j}) : Relink({to, j});
    }
    for (int j = 1; j <= 3; ++j) {
        if (triangle.Neighbour(j) < 0) {
            LinkPredecessor({to, j});
        }
    }
}

TriangleEdge ExactMesh::Across(TriangleEdge edge) const {
    const Triangle& triangle = triangles_.table[edge.triangle];
    const Index u = triangle.Neighbour(edge.edge);
    return {u, EdgeFrom(triangles_.table[u], triangle.Vertex(NextEdge(edge.edge)))};
}

void ExactMesh::Constrain(TriangleEdge edge) {
    hasConstraints_ = true;
    SetConstrained(edge);
    if (triangles_.Neighbour(edge.edge, edge.triangle) > 0) {
        SetConstrained(Across(edge));
    }
}

void ExactMesh::SetConstrained(TriangleEdge edge) {
    Mark& mark = marks_[edge.triangle];
    mark = static_cast<Mark>(mark | EdgeBit(edge.edge));
}

} // namespace terravo
