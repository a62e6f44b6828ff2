#include "triangulation/exact/SeamJoiner.h"

#include <algorithm>

namespace terravo {
namespace {

constexpr Index kGap = 0; // neighbour entry of a triangle's edge that faces the gap

} // namespace

// The hull link of the edge that begins at a hull point.
Index SeamJoiner::LinkFrom(Index hullPoint) const {
    const TriangleEdge into = mesh_.HullEdgeInto(hullPoint);
    return mesh_.triangles_.Neighbour(into.edge, into.triangle);
}

Index SeamJoiner::PointAfter(Index hullPoint) const {
    const TriangleEdge from = HullEdgeFromLink(LinkFrom(hullPoint));
    return mesh_.triangles_.Vertex(NextEdge(from.edge), from.triangle);
}

Index SeamJoiner::PointBefore(Index hullPoint) const {
    const TriangleEdge into = mesh_.HullEdgeInto(hullPoint);
    return mesh_.triangles_.Vertex(into.edge, into.triangle);
}

// Of points on the tangent the nearest to the gap are taken.
SeamJoiner::Ends SeamJoiner::LowerTangent(Ends ends) const {
    for (;;) {
        const Index before = PointBefore(ends.left);
        const Index after = PointAfter(ends.right);
        if (mesh_.Turn(before, ends.left, ends.right) < 0) {
            ends.left = before;
        } else if (mesh_.Turn(ends.right, after, ends.left) < 0) {
            ends.right = after;
        } else {
            return ends;
        }
    }
}

SeamJoiner::Ends SeamJoiner::UpperTangent(Ends ends) const {
    for (;;) {
        const Index after = PointAfter(ends.left);
        const Index before = PointBefore(ends.right);
        if (mesh_.Turn(ends.left, after, ends.right) < 0) {
            ends.left = after;
        } else if (mesh_.Turn(before, ends.right, ends.left) < 0) {
            ends.right = before;
        } else {
            return ends;
        }
    }
}

// A chain leads past the point nearest to the other side. Where both tangents end at one point,
// that is the nearest and the chain is empty, or it is not and the chain goes all the way round.
// The points between the ends of a chain come to lie inside.
void SeamJoiner::MakeChains(Ends nearest, Ends lower, Ends upper) {
    left_.clear();
    if (lower.left != nearest.left || upper.left != nearest.left) {
        Index point = lower.left;
        do {
            const TriangleEdge edge = HullEdgeFromLink(LinkFrom(point));
            left_.push_back({point, PointAfter(point), edge.triangle});
            point = left_.back().to;
        } while (point != upper.left);
    }
    right_.clear();
    if (lower.right != nearest.right || upper.right != nearest.right) {
        Index point = lower.right;
        do {
            right_.push_back({PointBefore(point), point, mesh_.HullEdgeInto(point).triangle});
            point = right_.back().from;
        } while (point != upper.right);
    }
    for (const Chain* chain : {&left_, &right_}) {
        for (const Bank& bank : *chain) {
            Triangle& triangle = mesh_.triangles_.table[bank.outer];
            triangle.SetNeighbour(EdgeFrom(triangle, bank.from), kGap);
        }
    }
    for (const Bank& bank : left_) {
        if (bank.from != lower.left) {
            mesh_.hullInto_[bank.from] = 0;
        }
    }
    for (const Bank& bank : right_) {
        if (bank.to != lower.right) {
            mesh_.hullInto_[bank.to] = 0;
        }
    }
    std::reverse(left_.begin(), left_.end());
    std::reverse(right_.begin(), right_.end());
}

bool SeamJoiner::IsAbove(Index point) const {
    return mesh_.Turn(ends_.left, ends_.right, point) > 0;
}

bool SeamJoiner::IsBare(const Bank& bank) const {
    return !bare_.empty() && bare_.contains(std::minmax(bank.from, bank.to));
}

// The corner behind an edge; 0 where no triangle is behind it.
Index SeamJoiner::ThirdCorner(const Bank& bank) const {
    if (bank.outer <= 0 || IsBare(bank)) {
        return 0;
    }
    const auto& corners = mesh_.triangles_.table[bank.outer].vertices;
    return *std::find_if(corners.begin(), corners.end(), [&bank](Index corner) {
        return corner != bank.from && corner != bank.to;
    });
}

// Takes the triangle behind the lowest edge of a chain away, and that edge with it. Where another
// of its edges is in a chain, too, the gap then lies on both sides of that edge.
// @return the edges that come in its place: from its start to the third corner, from there to its
//         end.
std::array<SeamJoiner::Bank, 2> SeamJoiner::TakeAway(Chain& chain, Index third) {
    const Bank bank = chain.back();
    chain.pop_back();
    freeSlots_.push_back(bank.outer);
    const Triangle& gone = mesh_.triangles_.table[bank.outer];
    const auto bare = [this, &gone](Index from, Index to) {
        const Index outer = gone.Neighbour(EdgeFrom(gone, to));
        if (outer == kGap) {
            bare_[std::minmax(from, to)] = 0;
        } else if (outer > 0) {
            Triangle& across = mesh_.triangles_.table[outer];
            across.SetNeighbour(EdgeFrom(across, from), kGap);
        }
        return Bank{from, to, outer};
    };
    return {bare(bank.from, third), bare(third, bank.to)};
}

void SeamJoiner::ErodeLeft() {
    for (;;) {
        const Bank& bank = left_.back();
        const Index third = ThirdCorner(bank);
        if (third == 0 || !mesh_.GivesWay(bank.to, bank.from, ends_.right, third)) {
            return;
        }
        const auto [lower, upper] = TakeAway(left_, third);
        left_.insert(left_.end(), {upper, lower});
    }
}

void SeamJoiner::ErodeRight() {
    for (;;) {
        const Bank& bank = right_.back();
        const Index third = ThirdCorner(bank);
        if (third == 0 || !mesh_.GivesWay(bank.to, bank.from, ends_.left, third)) {
            return;
        }
        const auto [upper, lower] = TakeAway(right_, third);
        right_.insert(right_.end(), {upper, lower});
    }
}

// Makes the triangle of the rising edge and a corner, which takes the lowest edge of a chain.
// @param bankEdge  the triangle's edge that this is; the other one of 2 and 3 is the next rising.
void SeamJoiner::Fill(Index corner, Chain& chain, int bankEdge) {
    const Bank bank = chain.back();
    chain.pop_back();
    const Index slot = freeSlots_.back();
    freeSlots_.pop_back();
    Triangle& triangle = mesh_.triangles_.table[slot];
    triangle = {{ends_.left, ends_.right, corner}, {lowerSide_.triangle, 0, 0}};
    for (const Index vertex : triangle.vertices) {
        mesh_.triangleOf_[vertex] = slot;
    }
    if (lowerSide_.triangle > 0) {
        mesh_.triangles_.table[lowerSide_.triangle].SetNeighbour(lowerSide_.edge, slot);
    } else {
        moved_.push_back({slot, 1});
    }
    lowerSide_ = {slot, bankEdge == 2 ? 3 : 2};
    Moor({slot, bankEdge}, bank);
}

// Links a new triangle with what is across its edge in a chain.
void SeamJoiner::Moor(TriangleEdge edge, const Bank& bank) {
    Index outer = bank.outer;
    if (IsBare(bank)) {
        const auto side = bare_.find(std::minmax(bank.from, bank.to));
        outer = side->second;
        if (outer == 0) {
            side->second = edge.triangle; // the other side of the edge comes later
            return;
        }
        bare_.erase(side);
    }
    mesh_.triangles_.table[edge.triangle].SetNeighbour(edge.edge, outer);
    if (outer > 0) {
        mesh_.Relink(edge);
    } else {
        moved_.push_back(edge);
    }
}

// False at the upper tangent.
bool SeamJoiner::Rise() {
    const bool leftOffers = !left_.empty() && IsAbove(left_.back().to);
    const bool rightOffers = !right_.empty() && IsAbove(right_.back().from);
    if (leftOffers) {
        ErodeLeft();
    }
    if (rightOffers) {
        ErodeRight();
    }
    if (leftOffers && (!rightOffers || !mesh_.GivesWay(ends_.right, left_.back().to, ends_.left,
                                                       right_.back().from))) {
        const Index corner = left_.back().to;
        Fill(corner, left_, 3);
        ends_.left = corner;
    } else if (rightOffers) {
        const Index corner = right_.back().from;
        Fill(corner, right_, 2);
        ends_.right = corner;
    }
    return leftOffers || rightOffers;
}

void SeamJoiner::RelinkHull() {
    for (const TriangleEdge& edge : moved_) {
        mesh_.NoteHullEdge(edge);
    }
    for (const TriangleEdge& edge : moved_) {
        mesh_.LinkPredecessor(edge);
    }
    moved_.clear();
}

void SeamJoiner::Join(Index left, Index right) {
    const Ends nearest{left, right};
    const Ends lower = LowerTangent(nearest);
    const Ends upper = UpperTangent(nearest);
    const Index linkBelow = LinkFrom(lower.right);
    const Index linkAbove = LinkFrom(upper.left);
    MakeChains(nearest, lower, upper);
    ends_ = lower;
    lowerSide_ = {};
    while (Rise()) {
    }
    mesh_.triangles_.table[lowerSide_.triangle].SetNeighbour(lowerSide_.edge, linkAbove);
    moved_.push_back(lowerSide_);
    const TriangleEdge lowest = moved_.front();
    mesh_.triangles_.table[lowest.triangle].SetNeighbour(lowest.edge, linkBelow);
    RelinkHull();
}

} // namespace terravo
