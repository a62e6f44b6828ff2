// A point taken out of a mesh again.
//
// Data: the corners about the point, counter-clockwise; of a point on the hull those from its next
// neighbour along the hull to the one before. Method: sides of the point are swapped for sides that
// cut off an ear of the polygon about it, until three triangles are left, which become one; on the
// hull until no ear is left, when the remaining triangles are dropped and their outer sides become
// the hull. Then the new sides are swapped until every circle is empty again. Three corners of
// which the middle one lies behind the point make an ear even when the point lies on the line
// between the others: the middle of a grid's square has no other ear. The flat triangle that this
// leaves at the point goes with it.
#include "triangulation/constrained/SegmentInserter.h"

namespace terravo {
namespace {

constexpr std::size_t kMostSides = 200; // finding ears takes the square of their number

} // namespace

std::vector<Index> SegmentInserter::Star(Index point, bool& hasConstrained) const {
    std::vector<Index> clockwise;
    AroundPoint(point, [&](Index t, int edge) {
        const Triangle& triangle = Triangles().table[t];
        hasConstrained =
            hasConstrained || IsConstrained({t, edge}) || IsConstrained({t, PreviousEdge(edge)});
        if (clockwise.empty() && IsOnHull(point)) {
            clockwise.push_back(triangle.Vertex(PreviousEdge(edge)));
        }
        clockwise.push_back(triangle.Vertex(NextEdge(edge)));
        return clockwise.size() <= kMostSides;
    });
    return {clockwise.rbegin(), clockwise.rend()};
}

// At the hull the ends of the chain are none.
// @return its place in the star, or the size of the star when there is none.
std::size_t SegmentInserter::FindEar(Index point, const std::vector<Index>& star) const {
    const std::size_t count = star.size();
    const std::size_t end = IsOnHull(point) ? 1 : 0;
    for (std::size_t i = end; i + end < count; ++i) {
        const Index before = star[(i + count - 1) % count];
        const Index after = star[(i + 1) % count];
        if (mesh_.Turn(before, star[i], after) > 0 && mesh_.Turn(before, after, point) >= 0) {
            return i;
        }
    }
    return count;
}

void SegmentInserter::CutEar(Index point, std::vector<Index>& star, std::size_t ear) {
    const std::size_t count = star.size();
    const Index before = star[(ear + count - 1) % count];
    const Index after = star[(ear + 1) % count];
    const TriangleEdge side = FindEdge(point, star[ear]);
    Swap(side);
    fresh_.push_back({before, after, side.triangle});
    star.erase(star.begin() + static_cast<std::ptrdiff_t>(ear));
}

// No slot of the point is referred to any more.
void SegmentInserter::Forget(Index point, const std::vector<Index>& slots, Index stillThere) {
    for (const Index slot : slots) {
        mesh_.triangles_.table[slot] = {};
        mesh_.marks_[slot] = 0;
    }
    mesh_.triangleOf_[point] = 0;
    mesh_.hullInto_[point] = 0;
    mesh_.BeginWalksAt(stillThere);
}

void SegmentInserter::CloseOver(Index point, const std::vector<Index>& star) {
    std::vector<Index> slots;
    Triangle closed;
    ExactMesh::Mark mark = 0;
    for (std::size_t k = 0; k < star.size(); ++k) { // side k runs from corner k to the next
        const TriangleEdge spoke = FindEdge(point, star[k]);
        const TriangleEdge inside =
            Triangles().Vertex(spoke.edge, spoke.triangle) == point ? spoke : mesh_.Across(spoke);
        const int side = NextEdge(inside.edge);
        const int edge = static_cast<int>(k) + 1;
        slots.push_back(inside.triangle);
        closed.vertices[k] = star[k];
        closed.SetNeighbour(edge, Triangles().Neighbour(side, inside.triangle));
        mark = static_cast<ExactMesh::Mark>(
            mark | ExactMesh::Moved(mesh_.marks_[inside.triangle], side, edge));
    }
    const Index t = slots.front();
    Forget(point, slots, t);
    mesh_.triangles_.table[t] = closed;
    mesh_.marks_[t] = mark;
    for (const Index corner : closed.vertices) {
        mesh_.triangleOf_[corner] = t;
    }
    for (int j = 1; j <= 3; ++j) {
        closed.Neighbour(j) < 0 ? mesh_.NoteHullEdge({t, j}) : mesh_.Relink({t, j});
    }
    for (int j = 1; j <= 3; ++j) {
        if (closed.Neighbour(j) < 0) {
            mesh_.LinkPredecessor({t, j});
        }
    }
    if (written_ != nullptr) {
        written_->push_back(t);
    }
}

// The hull ran into the point from the last corner and out of it to the first; now it runs along
// the corners from the last to the first.
bool SegmentInserter::DropFromHull(Index point, const std::vector<Index>& star) {
    std::vector<Index> slots;
    std::vector<TriangleEdge> rim; // beyond side k
    AroundPoint(point, [&](Index t, int edge) {
        slots.push_back(t);
        const TriangleEdge outer{t, NextEdge(edge)};
        rim.push_back(IsHullEdge(outer) ? TriangleEdge{} : mesh_.Across(outer));
        return rim.back().triangle != 0;
    });
    if (rim.back().triangle == 0) {
        return false;
    }
    const TriangleEdge first{slots.back(), EdgeFrom(Triangles().table[slots.back()], point)};
    const Index onward = Triangles().Neighbour(first.edge, first.triangle);
    for (const TriangleEdge& edge : rim) { // from the last corner to the first
        mesh_.triangleOf_[Triangles().Vertex(edge.edge, edge.triangle)] = edge.triangle;
        mesh_.triangleOf_[Triangles().Vertex(NextEdge(edge.edge), edge.triangle)] = edge.triangle;
    }
    Forget(point, slots, rim.front().triangle);
    for (std::size_t k = 0; k < rim.size(); ++k) {
        const Index entry = k + 1 < rim.size() ? LinkToHullEdge(rim[k + 1]) : onward;
        mesh_.triangles_.table[rim[k].triangle].SetNeighbour(rim[k].edge, entry);
        mesh_.NoteHullEdge(rim[k]);
    }
    mesh_.LinkPredecessor(rim.front());
    hullPoint_ = star.front();
    return true;
}

bool SegmentInserter::Remove(Index point) {
    bool hasConstrained = false;
    std::vector<Index> star = Star(point, hasConstrained);
    if (hasConstrained || star.size() > kMostSides) {
        return false;
    }
    const bool isOnHull = IsOnHull(point);
    const std::size_t fewest = isOnHull ? 2 : 3;
    while (star.size() > fewest) {
        const std::size_t ear = FindEar(point, star);
        if (ear == star.size()) {
            break;
        }
        CutEar(point, star, ear);
    }
    if (isOnHull ? !DropFromHull(point, star) : star.size() > fewest) {
        fresh_.clear();
        return false;
    }
    if (!isOnHull) {
        CloseOver(point, star);
    }
    Restore();
    return true;
}

} // namespace terravo
