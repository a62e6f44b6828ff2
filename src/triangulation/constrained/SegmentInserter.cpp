#include "triangulation/constrained/SegmentInserter.h"

#include <algorithm>
#include <array>

namespace terravo {
namespace {

double SquaredDistance(PlanPoint a, PlanPoint b) {
    return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

// Swaps and waits before the triangles about a segment are made anew.
constexpr std::size_t kStepsACrossing = 2;
constexpr std::size_t kFewSteps = 64;

} // namespace

// Of a point on the line from -> to: whether it lies on the side of `to`.
bool SegmentInserter::IsAhead(Index from, Index to, Index point) const {
    const PlanPoint& a = Position(from);
    const PlanPoint& b = Position(to);
    const PlanPoint& p = Position(point);
    if (a.x < b.x || b.x < a.x) {
        return a.x < b.x ? a.x < p.x : p.x < a.x;
    }
    return a.y < b.y ? a.y < p.y : p.y < a.y;
}

SegmentInserter::Start SegmentInserter::Leave(Index from, Index to) const {
    Start start;
    constexpr int kUnknown = 2;
    int toOfLeft = kUnknown; // side of `to` seen along the edge to the left corner
    AroundPoint(from, [&](Index t, int edge) {
        const Triangle& triangle = Triangles().table[t];
        const Index right = triangle.Vertex(NextEdge(edge));
        const Index left = triangle.Vertex(PreviousEdge(edge));
        if (right == to || left == to) {
            start = {Way::Edge, {t, right == to ? edge : PreviousEdge(edge)}, to};
            return false;
        }
        if (toOfLeft == kUnknown) {
            toOfLeft = mesh_.Turn(from, left, to);
            if (toOfLeft == 0 && IsAhead(from, to, left)) {
                start = {Way::Edge, {t, PreviousEdge(edge)}, left};
                return false;
            }
        }
        const int toOfRight = mesh_.Turn(from, right, to);
        if (toOfRight == 0 && IsAhead(from, to, right)) {
            start = {Way::Edge, {t, edge}, right};
            return false;
        }
        if (toOfRight > 0 && toOfLeft < 0) {
            start = {Way::Across, {t, NextEdge(edge)}, 0};
            return false;
        }
        toOfLeft = toOfRight; // the next triangle lies beyond the right edge
        return true;
    });
    return start;
}

TriangleEdge SegmentInserter::FindEdge(Index p, Index q) const {
    TriangleEdge found;
    AroundPoint(p, [&](Index t, int edge) {
        const Triangle& triangle = Triangles().table[t];
        if (triangle.Vertex(NextEdge(edge)) == q) {
            found = {t, edge};
        } else if (triangle.Vertex(PreviousEdge(edge)) == q) {
            found = {t, PreviousEdge(edge)};
        }
        return found.triangle == 0;
    });
    return found;
}

TriangleEdge SegmentInserter::FindEdge(Index p, Index q, Index hint) const {
    const Triangle& triangle = Triangles().table[hint];
    for (int j = 1; j <= 3; ++j) {
        const Index from = triangle.Vertex(j);
        const Index to = triangle.Vertex(NextEdge(j));
        if ((from == p && to == q) || (from == q && to == p)) {
            return {hint, j};
        }
    }
    return FindEdge(p, q);
}

// Strictly: both ends of the new diagonal see the old one's ends on different sides.
bool SegmentInserter::IsConvex(TriangleEdge edge) const {
    const Triangle& triangle = Triangles().table[edge.triangle];
    const TriangleEdge across = mesh_.Across(edge);
    const Index near = triangle.Vertex(PreviousEdge(edge.edge));
    const Index far = Triangles().table[across.triangle].Vertex(PreviousEdge(across.edge));
    return mesh_.Turn(near, triangle.Vertex(edge.edge), far) > 0 &&
           mesh_.Turn(far, triangle.Vertex(NextEdge(edge.edge)), near) > 0;
}

// Numbers the corners of a triangle anew, so that the edge becomes edge 2.
void SegmentInserter::Turn2(TriangleEdge edge) {
    if (edge.edge == 2) {
        return;
    }
    const Index t = edge.triangle;
    const Triangle old = Triangles().table[t];
    const ExactMesh::Mark mark = mesh_.marks_[t];
    Triangle& turned = mesh_.triangles_.table[t];
    ExactMesh::Mark newMark = 0;
    bool isAtHull = false;
    for (int j = 1, from = PreviousEdge(edge.edge); j <= 3; ++j, from = NextEdge(from)) {
        turned.vertices[static_cast<std::size_t>(j) - 1] = old.Vertex(from);
        turned.SetNeighbour(j, old.Neighbour(from));
        newMark = static_cast<ExactMesh::Mark>(newMark | ExactMesh::Moved(mark, from, j));
        isAtHull = isAtHull || old.Neighbour(from) < 0;
    }
    mesh_.marks_[t] = newMark;
    if (!isAtHull) {
        return;
    }
    for (int j = 1; j <= 3; ++j) {
        if (turned.Neighbour(j) < 0) {
            mesh_.NoteHullEdge({t, j});
        }
    }
    for (int j = 1; j <= 3; ++j) {
        if (turned.Neighbour(j) < 0) {
            mesh_.LinkPredecessor({t, j});
        }
    }
}

// The new edge is edge 3 of the same triangle.
void SegmentInserter::Swap(TriangleEdge edge) {
    Turn2(edge);
    const TriangleEdge across = mesh_.Across({edge.triangle, 2});
    mesh_.SwapForOthers(edge.triangle, across.triangle, across.edge);
    if (written_ != nullptr) {
        written_->insert(written_->end(), {edge.triangle, across.triangle});
    }
}

void SegmentInserter::SwapOrWait(Index from, Index to, const Crossed& crossed) {
    const TriangleEdge edge = FindEdge(crossed.right, crossed.left, crossed.triangle);
    if (!IsConvex(edge)) {
        queue_.push_back({crossed.right, crossed.left, edge.triangle});
        return;
    }
    Swap(edge);
    const Index p = Triangles().Vertex(3, edge.triangle);
    const Index q = Triangles().Vertex(1, edge.triangle);
    const auto isEnd = [&](Index point) { return point == from || point == to; };
    if (isEnd(p) && isEnd(q)) {
        return;
    }
    const int sideOfP = isEnd(p) ? 0 : mesh_.Turn(from, to, p);
    const int sideOfQ = isEnd(q) ? 0 : mesh_.Turn(from, to, q);
    if (sideOfP * sideOfQ >= 0) {
        fresh_.push_back({p, q, edge.triangle});
    } else {
        queue_.push_back({sideOfP < 0 ? p : q, sideOfP < 0 ? q : p, edge.triangle});
    }
}

void SegmentInserter::MakeEdge(Index from, Index to, const std::vector<Crossed>& crossed,
                               Road road) {
    mesh_.hasConstraints_ = true;
    std::size_t steps = kStepsACrossing * crossed.size() + kFewSteps;
    queue_.assign(crossed.begin(), crossed.end());
    while (!queue_.empty()) {
        if (--steps == 0 && road == Road::Shortest && FillCavity(from, to)) {
            queue_.clear();
            break;
        }
        const Crossed next = queue_.front();
        queue_.pop_front();
        SwapOrWait(from, to, next);
    }
    mesh_.Constrain(FindEdge(from, to));
    Restore();
}

void SegmentInserter::Restore() {
    while (!fresh_.empty()) {
        const Fresh next = fresh_.back();
        fresh_.pop_back();
        const TriangleEdge edge = FindEdge(next.from, next.to, next.triangle);
        if (edge.triangle == 0 || IsHullEdge(edge) || mesh_.IsConstrained(edge)) {
            continue;
        }
        const Triangle& triangle = Triangles().table[edge.triangle];
        const TriangleEdge across = mesh_.Across(edge);
        const Index a = triangle.Vertex(edge.edge);
        const Index b = triangle.Vertex(NextEdge(edge.edge));
        const Index near = triangle.Vertex(PreviousEdge(edge.edge));
        const Index far = Triangles().table[across.triangle].Vertex(PreviousEdge(across.edge));
        if (!mesh_.GivesWay(a, b, near, far)) {
            continue;
        }
        Swap(edge);
        fresh_.push_back({near, a, edge.triangle});
        fresh_.push_back({a, far, edge.triangle});
        fresh_.push_back({far, b, across.triangle});
        fresh_.push_back({b, near, across.triangle});
    }
}

void SegmentInserter::Release(Index p, Index q) {
    const TriangleEdge edge = FindEdge(p, q);
    const auto clear = [this](TriangleEdge side) {
        ExactMesh::Mark& mark = mesh_.marks_[side.triangle];
        mark = static_cast<ExactMesh::Mark>(mark & ~ExactMesh::EdgeBit(side.edge));
    };
    clear(edge);
    if (!IsHullEdge(edge)) {
        clear(mesh_.Across(edge));
    }
    fresh_.push_back({p, q, edge.triangle});
    Restore();
}

// Lines that reach outside look for it again and again, so where it was is kept.
TriangleEdge SegmentInserter::AnyHullEdge() const {
    while (mesh_.hullInto_[hullPoint_] == 0) {
        hullPoint_ = hullPoint_ == mesh_.PointCount() ? 1 : hullPoint_ + 1;
    }
    return mesh_.HullEdgeInto(hullPoint_);
}

MeshPlace SegmentInserter::Locate(PlanPoint position, Index startTriangle) {
    Admit(position);
    return mesh_.Locate(mesh_.site_, position, startTriangle);
}

// Of any point that is not the nearest, a neighbour in an empty-circle triangulation is nearer.
Index SegmentInserter::Nearest(PlanPoint position, const MeshPlace& place) const {
    Index nearest = 0;
    double least = 0;
    const auto look = [&](Index point) {
        const double distance = SquaredDistance(Position(point), position);
        if (nearest == 0 || distance < least) {
            nearest = point;
            least = distance;
            return true;
        }
        return false;
    };
    for (const Index corner : Triangles().table[place.triangle].vertices) {
        look(corner);
    }
    for (bool comesNearer = true; comesNearer;) {
        comesNearer = false;
        AroundPoint(nearest, [&](Index t, int edge) {
            comesNearer = look(Triangles().Vertex(NextEdge(edge), t)) ||
                          look(Triangles().Vertex(PreviousEdge(edge), t));
            return !comesNearer;
        });
    }
    return nearest;
}

Index SegmentInserter::Put(PlanPoint position, const MeshPlace& place) {
    const Index point = mesh_.Append(position, mesh_.PointCount() + 1);
    mesh_.PutAt(mesh_.site_, point, place);
    mesh_.SwapAbout(mesh_.site_);
    mesh_.triangles_.count = mesh_.site_.LastUsed();
    return point;
}

} // namespace terravo
