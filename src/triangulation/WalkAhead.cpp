#include "triangulation/WalkAhead.h"

#include "util/Prefetch.h"

namespace terravo {
namespace {

// True when p lies to the right of the line from a to b. Only a hint hangs on it.
bool IsRightOf(const PlanPoint& p, const PlanPoint& a, const PlanPoint& b) {
    return (b.x - a.x) * (p.y - a.y) < (b.y - a.y) * (p.x - a.x);
}

} // namespace

WalkAhead::WalkAhead(const Array1<PlanPoint>& coord, const Array1<Index>& order,
                     const TriangleList& triangles, const NearbyStart& nearby)
    : coord_(coord), order_(order), triangles_(triangles), nearby_(nearby) {}

Index WalkAhead::StartFor(Index i) {
    const Index lastAdmitted = nextToAdmit_ - 1;
    while (nextToAdmit_ <= order_.UpperBound() && nextToAdmit_ < i + kDepth) {
        Admit(nextToAdmit_++);
    }
    // One admitted just now has its cell still on the way.
    for (Index k = i + 1; k <= lastAdmitted; ++k) {
        Advance(At(k));
    }
    const Traveller& arrived = At(i);
    return arrived.hasStart ? arrived.triangle : nearby_.StartFor(arrived.point, arrived.previous);
}

void WalkAhead::Admit(Index i) {
    At(i) = {coord_[order_[i]], coord_[order_[i - 1]], 0, Stage::ReadCell, false};
    nearby_.PrefetchCell(At(i).point);
}

void WalkAhead::Advance(Traveller& traveller) const {
    if (traveller.stage == Stage::Arrived) {
        return;
    }
    if (traveller.stage == Stage::ReadCell) {
        traveller.triangle = nearby_.InCell(traveller.point);
        PrefetchLine(&triangles_.table[traveller.triangle]);
        traveller.stage = Stage::ReadCorners;
        return;
    }
    const Triangle& t = triangles_.table[traveller.triangle];
    if (traveller.stage == Stage::ReadCorners) {
        for (const Index vertex : t.vertices) {
            PrefetchLine(&coord_[vertex]);
        }
        traveller.stage = Stage::Step;
    } else if (traveller.stage == Stage::Step) {
        Step(traveller, t);
    } else {
        ReadAround(t);
        traveller.stage = Stage::Arrived;
    }
}

void WalkAhead::Step(Traveller& traveller, const Triangle& t) const {
    const PlanPoint& p = traveller.point;
    const PlanPoint& a = coord_[t.vertices[0]];
    const PlanPoint& b = coord_[t.vertices[1]];
    const PlanPoint& c = coord_[t.vertices[2]];
    if (SquaredDistance(p, traveller.previous) < SquaredDistance(p, a)) {
        // The point before it is a better start, and is not inserted yet.
        traveller.hasStart = false;
        traveller.stage = Stage::Arrived;
        return;
    }
    traveller.hasStart = true;
    const int edge = IsRightOf(p, b, c) ? 2 : IsRightOf(p, c, a) ? 3 : IsRightOf(p, a, b) ? 1 : 0;
    const Index neighbour = edge == 0 ? 0 : t.Neighbour(edge);
    if (neighbour > 0) {
        traveller.triangle = neighbour;
        PrefetchLine(&triangles_.table[neighbour]);
        traveller.stage = Stage::ReadCorners;
        return;
    }
    for (const Index next : t.neighbours) {
        if (next > 0) {
            PrefetchLine(&triangles_.table[next]);
        }
    }
    traveller.stage = Stage::ReadAround;
}

// The swaps about the new point will look at the neighbours and at those behind them.
void WalkAhead::ReadAround(const Triangle& t) const {
    for (const Index next : t.neighbours) {
        if (next <= 0) {
            continue;
        }
        const Triangle& u = triangles_.table[next];
        for (std::size_t j = 0; j < 3; ++j) {
            PrefetchLine(&coord_[u.vertices[j]]);
            if (u.neighbours[j] > 0) {
                PrefetchLine(&triangles_.table[u.neighbours[j]]);
            }
        }
    }
}

} // namespace terravo
