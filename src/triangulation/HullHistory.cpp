#include "triangulation/HullHistory.h"

#include "triangulation/FileOrderChoice.h"
#include "util/modUtilita.h"

#include <array>
#include <cmath>
#include <numbers>

namespace terravo {
namespace {

// Walks round the hull are short when points come along the ground or mostly fall inside. Other
// sets, as those whose points all lie on the hull, are not worth following.
constexpr Index kMostStepsAPoint = 64;

constexpr std::size_t kDirections = 32;

enum class Side { Left, Right, On, Unclear };

class HullHistory {
public:
    HullHistory(const Array1<PlanPoint>& coord, double span, double exactReach)
        : coord_(coord), next_(coord.UpperBound()), previous_(coord.UpperBound()),
          leastHeight_(kLeastHeight * span), leastArea_(kAreaBound * span * span),
          exactReach_(exactReach),
          stepsLeft_(static_cast<std::int64_t>(kMostStepsAPoint) * coord.UpperBound()) {}

    bool Begin(Index a, Index b, Index c);
    bool Add(Index m);

private:
    enum class Finding { Inside, Repeat, Sees, OnEdge, Unclear };

    struct Found {
        Finding finding;
        Index from = 0; // start of the edge that is seen or holds the point
    };

    [[nodiscard]] const PlanPoint& At(Index point) const { return coord_[point]; }
    [[nodiscard]] bool IsDeepInside(PlanPoint p, std::size_t stride) const;
    [[nodiscard]] Side SideOf(Index m, Index from) const;
    [[nodiscard]] double LeastTurn(Difference edge) const {
        return std::max(leastHeight_ * std::hypot(edge.x, edge.y), leastArea_);
    }
    [[nodiscard]] bool IsWellOutside(Index m, Index from) const;
    [[nodiscard]] bool IsBetween(Index m, Index from) const;
    Found Find(Index m);
    bool Extend(Index m, Index seen);
    void Join(Index before, Index m, Index after);
    void NoteExtremes(Index m);
    [[nodiscard]] bool CountsAsOnEdge(Index m, Index from) const;

    const Array1<PlanPoint>& coord_;
    Array1<Index> next_; // counter-clockwise, for points on the hull
    Array1<Index> previous_;
    std::array<Index, kDirections> extremes_{}; // hull points furthest each way, from east on
    double leastHeight_;
    double leastArea_; // doubled; below it the walk's rounding errors could hide the side
    double exactReach_;
    std::int64_t stepsLeft_;
    Index last_ = 0;    // the hull point added last
    Index fanApex_ = 0; // the only point so far that is not on the line through the first two, or 0
};

const std::array<PlanPoint, kDirections> kCompass = [] {
    std::array<PlanPoint, kDirections> compass;
    for (std::size_t k = 0; k < kDirections; ++k) {
        const double angle = 2 * std::numbers::pi * static_cast<double>(k) / kDirections;
        compass[k] = {std::cos(angle), std::sin(angle)};
    }
    return compass;
}();

double Along(PlanPoint p, std::size_t direction) {
    return p.x * kCompass[direction].x + p.y * kCompass[direction].y;
}

void HullHistory::NoteExtremes(Index m) {
    for (std::size_t k = 0; k < extremes_.size(); ++k) {
        if (Along(At(m), k) > Along(At(extremes_[k]), k)) {
            extremes_[k] = m;
        }
    }
}

bool HullHistory::Begin(Index a, Index b, Index c) {
    const Sum turn = Cross(At(b) - At(a), At(c) - At(a));
    if (std::fabs(turn.value) <= kTurnBound * turn.magnitude) {
        return false;
    }
    const Index third = c;
    if (turn.value < 0) {
        std::swap(b, c);
    }
    Join(a, b, c);
    Join(b, c, a);
    extremes_.fill(a);
    NoteExtremes(b);
    NoteExtremes(c);
    last_ = c;
    fanApex_ = third;
    return true;
}

void HullHistory::Join(Index before, Index m, Index after) {
    next_[before] = m;
    previous_[m] = before;
    next_[m] = after;
    previous_[after] = m;
}

// Inside the polygon of every stride-th extreme point by more than the least height.
bool HullHistory::IsDeepInside(PlanPoint p, std::size_t stride) const {
    for (std::size_t k = 0; k < kDirections; k += stride) {
        const PlanPoint& a = At(extremes_[k]);
        const PlanPoint& b = At(extremes_[(k + stride) % kDirections]);
        const Difference ab = b - a;
        const double height = Cross(ab, p - a).value;
        if (height <= std::max(leastHeight_ * (std::fabs(ab.x) + std::fabs(ab.y)), leastArea_) &&
            !(a == b)) {
            return false;
        }
    }
    return true;
}

// Side of the hull edge that starts at a point on which another point lies: Left is inwards.
Side HullHistory::SideOf(Index m, Index from) const {
    const Difference ab = At(next_[from]) - At(from);
    const Difference am = At(m) - At(from);
    const Sum turn = Cross(ab, am);
    if (std::fabs(turn.value) > kTurnBound * turn.magnitude) {
        return turn.value > 0 ? Side::Left : Side::Right;
    }
    if (std::max(ab.Largest(), am.Largest()) <= exactReach_) {
        return turn.value > 0 ? Side::Left : turn.value < 0 ? Side::Right : Side::On;
    }
    return modUtilita::IsExactly(turn.magnitude, 0.0) ? Side::On : Side::Unclear;
}

bool HullHistory::IsWellOutside(Index m, Index from) const {
    const Difference ab = At(next_[from]) - At(from);
    return Cross(ab, At(m) - At(from)).value < -LeastTurn(ab);
}

bool HullHistory::IsBetween(Index m, Index from) const {
    const Difference am = At(m) - At(from);
    const Difference bm = At(m) - At(next_[from]);
    return Dot(am, bm).value <= 0;
}

// Whether the walk, which computes how far m is from each side of the triangle behind the edge,
// finds it on the edge. Where it does not compute exactly, the apex of that triangle must be known:
// it is for a first row that still has only one point beside it.
bool HullHistory::CountsAsOnEdge(Index m, Index from) const {
    const PlanPoint& a = At(from);
    const PlanPoint& b = At(next_[from]);
    const Difference ab = b - a;
    if (ab.Largest() <= exactReach_) {
        return true;
    }
    if (fanApex_ == 0 || fanApex_ == from || fanApex_ == next_[from]) {
        return false;
    }
    const Difference ap = At(fanApex_) - a;
    const Difference bp = At(fanApex_) - b;
    const Difference mp = At(fanApex_) - At(m);
    const double widest = std::max({std::fabs(ap.x), std::fabs(bp.x), std::fabs(mp.x)});
    const double highest = std::max({std::fabs(ap.y), std::fabs(bp.y), std::fabs(mp.y)});
    // Each share of the area is off by at most 4 units of twice this product, the last by both.
    const double error = 32 * kUnitError * widest * highest;
    return error < modGeometria::kTolerance * Cross(ab, ap).value;
}

// The edges at the point added last come first: points that follow each other lie side by side.
HullHistory::Found HullHistory::Find(Index m) {
    for (const Index from : {last_, previous_[last_]}) {
        if (SideOf(m, from) == Side::Right && IsWellOutside(m, from)) {
            return {Finding::Sees, from};
        }
    }
    bool clearOfAll = true;
    Index from = last_;
    do {
        const Side side = SideOf(m, from);
        if (side == Side::Right && IsWellOutside(m, from)) {
            return {Finding::Sees, from};
        }
        if (side == Side::On && IsBetween(m, from)) {
            if (At(m) == At(from) || At(m) == At(next_[from])) {
                return {Finding::Repeat};
            }
            return {CountsAsOnEdge(m, from) ? Finding::OnEdge : Finding::Unclear, from};
        }
        if (side != Side::Left) {
            clearOfAll = false;
        } else {
            const Difference ab = At(next_[from]) - At(from);
            const double height = Cross(ab, At(m) - At(from)).value;
            clearOfAll = clearOfAll && height > LeastTurn(ab);
        }
        from = next_[from];
    } while (from != last_ && --stepsLeft_ > 0);
    return {clearOfAll && from == last_ ? Finding::Inside : Finding::Unclear};
}

// Replaces the run of edges that m sees.
bool HullHistory::Extend(Index m, Index seen) {
    Index first = seen;
    Index end = next_[seen];
    Side side = Side::Right;
    while ((side = SideOf(m, end)) == Side::Right && --stepsLeft_ > 0) {
        end = next_[end];
    }
    if (side == Side::Unclear) {
        return false;
    }
    while ((side = SideOf(m, previous_[first])) == Side::Right && --stepsLeft_ > 0) {
        first = previous_[first];
    }
    if (side == Side::Unclear || stepsLeft_ <= 0) {
        return false;
    }
    Join(first, m, end);
    NoteExtremes(m);
    last_ = m;
    return true;
}

bool HullHistory::Add(Index m) {
    if (fanApex_ != 0 && !modUtilita::IsExactly(Cross(At(2) - At(1), At(m) - At(1)).value, 0.0)) {
        fanApex_ = 0;
    }
    // The octagon finds most; what lies between it and a round hull would have to go round the
    // hull.
    if (IsDeepInside(At(m), kDirections / 8) || IsDeepInside(At(m), 1)) {
        return true;
    }
    const Found found = Find(m);
    switch (found.finding) {
    case Finding::Inside:
    case Finding::Repeat:
        return true;
    case Finding::Sees:
        return Extend(m, found.from);
    case Finding::OnEdge:
        Join(found.from, m, next_[found.from]);
        last_ = m;
        return true;
    case Finding::Unclear:
        break;
    }
    return false;
}

} // namespace

bool HullHistoryIsClear(const Array1<PlanPoint>& coord, Index thirdPosition, double span,
                        double exactReach, const std::atomic<bool>& stop) {
    HullHistory history(coord, span, exactReach);
    if (!history.Begin(1, 2, thirdPosition)) {
        return false;
    }
    for (Index position = 4; position <= coord.UpperBound(); ++position) {
        if (!history.Add(position == thirdPosition ? 3 : position) ||
            stop.load(std::memory_order_relaxed)) {
            return false;
        }
    }
    return true;
}

} // namespace terravo
