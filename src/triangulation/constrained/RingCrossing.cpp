#include "triangulation/constrained/RingCrossing.h"

#include "triangulation/exact/ExactSigns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace terravo {
namespace {

struct Side {
    PlanPoint from;
    PlanPoint to;
    PlanPoint low; // of its extent
    PlanPoint high;
};

std::vector<Side> SidesOf(const std::vector<SpacePoint>& ring) {
    std::vector<Side> sides;
    sides.reserve(ring.size());
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const PlanPoint a = PlanOf(ring[i]);
        const PlanPoint b = PlanOf(ring[i + 1 == ring.size() ? 0 : i + 1]);
        sides.push_back({a,
                         b,
                         {std::min(a.x, b.x), std::min(a.y, b.y)},
                         {std::max(a.x, b.x), std::max(a.y, b.y)}});
    }
    return sides;
}

// The part of two sides on one line that both have, when it is longer than nothing: its middle.
std::optional<PlanPoint> SharedPart(const Side& one, const Side& other) {
    const PlanPoint low{std::max(one.low.x, other.low.x), std::max(one.low.y, other.low.y)};
    const PlanPoint high{std::min(one.high.x, other.high.x), std::min(one.high.y, other.high.y)};
    if (low.x < high.x || (low.y < high.y && low.x <= high.x)) {
        return PlanPoint{(low.x + high.x) / 2, (low.y + high.y) / 2};
    }
    return std::nullopt;
}

std::optional<PlanPoint> Crossing(const ExactSigns& signs, const Side& one, const Side& other) {
    const int a = signs.Turn(other.from, other.to, one.from);
    const int b = signs.Turn(other.from, other.to, one.to);
    if (a == 0 && b == 0) {
        return SharedPart(one, other);
    }
    if (a * b >= 0 ||
        signs.Turn(one.from, one.to, other.from) * signs.Turn(one.from, one.to, other.to) >= 0) {
        return std::nullopt;
    }
    const double dx = other.to.x - other.from.x;
    const double dy = other.to.y - other.from.y;
    const double begin =
        std::fabs(dx * (one.from.y - other.from.y) - dy * (one.from.x - other.from.x));
    const double end = std::fabs(dx * (one.to.y - other.from.y) - dy * (one.to.x - other.from.x));
    const double part = begin + end > 0 ? begin / (begin + end) : 0;
    return PlanPoint{one.from.x + part * (one.to.x - one.from.x),
                     one.from.y + part * (one.to.y - one.from.y)};
}

} // namespace

std::optional<PlanPoint> FindRingCrossing(const std::vector<SpacePoint>& ring) {
    Array1<PlanPoint> places;
    for (const SpacePoint& vertex : ring) {
        places.Append(PlanOf(vertex));
    }
    const ExactSigns signs(places);
    std::vector<Side> sides = SidesOf(ring);
    // Along the longer extent few sides overlap.
    const auto [left, right] = std::minmax_element(
        places.begin(), places.end(), [](PlanPoint p, PlanPoint q) { return p.x < q.x; });
    const auto [low, high] = std::minmax_element(
        places.begin(), places.end(), [](PlanPoint p, PlanPoint q) { return p.y < q.y; });
    const double PlanPoint::*along =
        right->x - left->x >= high->y - low->y ? &PlanPoint::x : &PlanPoint::y;
    const double PlanPoint::*aside = along == &PlanPoint::x ? &PlanPoint::y : &PlanPoint::x;
    std::sort(sides.begin(), sides.end(),
              [along](const Side& a, const Side& b) { return a.low.*along < b.low.*along; });
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < sides.size(); ++i) {
        const Side& side = sides[i];
        std::erase_if(open, [&](std::size_t k) { return sides[k].high.*along < side.low.*along; });
        for (const std::size_t k : open) {
            const Side& other = sides[k];
            if (other.low.*aside <= side.high.*aside && side.low.*aside <= other.high.*aside) {
                if (const std::optional<PlanPoint> place = Crossing(signs, side, other)) {
                    return place;
                }
            }
        }
        open.push_back(i);
    }
    return std::nullopt;
}

} // namespace terravo
