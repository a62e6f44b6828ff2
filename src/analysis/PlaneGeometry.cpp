#include "analysis/PlaneGeometry.h"

#include "triangulation/exact/Expansion.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

double ExactTurnValue(PlanPoint a, PlanPoint b, PlanPoint c) {
    using exact::ExactDifference;
    const auto turn = ExactDifference(a.x, c.x) * ExactDifference(b.y, c.y) -
                      ExactDifference(b.x, c.x) * ExactDifference(a.y, c.y);
    double value = 0;
    for (std::size_t i = 0; i < turn.Count(); ++i) {
        value += turn[i];
    }
    return value;
}

} // namespace

double TurnValue(PlanPoint a, PlanPoint b, PlanPoint c) {
    constexpr double kSmall = 1e-3; // beside an error of some 1e-16
    const double left = (a.x - c.x) * (b.y - c.y);
    const double right = (b.x - c.x) * (a.y - c.y);
    const double value = left - right;
    return std::fabs(value) > kSmall * (std::fabs(left) + std::fabs(right))
               ? value
               : ExactTurnValue(a, b, c);
}

SpacePoint PointBetween(const SpacePoint& from, const SpacePoint& to, double part) {
    return {from.x + part * (to.x - from.x), from.y + part * (to.y - from.y),
            from.z + part * (to.z - from.z)};
}

SpacePoint CrossingWithLine(const SpacePoint& from, const SpacePoint& to, PlanPoint p,
                            PlanPoint q) {
    const double before = TurnValue(p, q, PlanOf(from));
    const double behind = TurnValue(p, q, PlanOf(to));
    return PointBetween(from, to, before / (before - behind));
}

double HeightOnSide(const SpacePoint& from, const SpacePoint& to, PlanPoint place) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double part = ((place.x - from.x) * dx + (place.y - from.y) * dy) / (dx * dx + dy * dy);
    return from.z + std::clamp(part, 0.0, 1.0) * (to.z - from.z);
}

// From the corner that counts most, so that the others add little of their rounding.
double HeightOnTriangle(const std::array<SpacePoint, 3>& corners, PlanPoint place) {
    std::array<double, 3> weights{};
    double whole = 0;
    for (std::size_t k = 0; k < 3; ++k) {
        weights[k] = TurnValue(PlanOf(corners[(k + 1) % 3]), PlanOf(corners[(k + 2) % 3]), place);
        whole += weights[k];
    }
    const auto most = static_cast<std::size_t>(std::max_element(weights.begin(), weights.end()) -
                                               weights.begin());
    double height = corners[most].z;
    for (const std::size_t k : {(most + 1) % 3, (most + 2) % 3}) {
        height += weights[k] / whole * (corners[k].z - corners[most].z);
    }
    return height;
}

} // namespace terravo
