#include "triangulation/exact/ExactSigns.h"

#include "triangulation/exact/Expansion.h"
#include "triangulation/exact/WideInteger.h"

#include <algorithm>
#include <bit>

namespace terravo {
namespace {

using exact::ExactDifference;
using exact::Int128;

// Exponent of the largest power of two of which a coordinate is a multiple, from its bits. Zero is
// a multiple of all.
int StepExponentOf(double coordinate) {
    constexpr unsigned kFractionBits = 52;
    constexpr int kLeastExponent = -1074;
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(coordinate);
    const std::uint64_t fraction = bits & ((std::uint64_t{1} << kFractionBits) - 1);
    const int exponent = static_cast<int>((bits >> kFractionBits) & 0x7FFU);
    if (exponent == 0) {
        return fraction == 0 ? std::numeric_limits<int>::max()
                             : kLeastExponent + std::countr_zero(fraction);
    }
    const std::uint64_t digits = fraction | std::uint64_t{1} << kFractionBits;
    return kLeastExponent + exponent - 1 + std::countr_zero(digits);
}

} // namespace

bool IsWithinReach(double coordinate) {
    constexpr double kLeast = 0x1p-200;
    constexpr double kMost = 0x1p250;
    const double magnitude = std::fabs(coordinate);
    return (magnitude >= kLeast && magnitude <= kMost) || magnitude <= 0;
}

ExactSigns::ExactSigns(const Array1<PlanPoint>& points) {
    for (const PlanPoint& point : points) {
        Widen(point);
    }
    SetBounds();
    SetStep();
}

void ExactSigns::Admit(PlanPoint point) {
    Widen(point);
    SetBounds();
    SetStep();
}

void ExactSigns::Widen(PlanPoint point) {
    low_ = {std::min(low_.x, point.x), std::min(low_.y, point.y)};
    high_ = {std::max(high_.x, point.x), std::max(high_.y, point.y)};
    stepExponent_ = std::min({stepExponent_, StepExponentOf(point.x), StepExponentOf(point.y)});
}

void ExactSigns::SetBounds() {
    constexpr double kRoundedUp = 1 + 4 * kHalfUlp;
    const double width = (high_.x - low_.x) * kRoundedUp;
    const double height = (high_.y - low_.y) * kRoundedUp;
    turnBound_ = 2.01 * kTurnError * width * height;
    circleBound_ = CircleBound(width, height);
}

// Differences of less than 2^61 steps: products of two fit in 128 bits, products of four in 256.
void ExactSigns::SetStep() {
    constexpr double kMostSteps = 0x1p60;
    stepsPerUnit_ = 0;
    if (stepExponent_ < std::numeric_limits<int>::max()) {
        const double perUnit = std::ldexp(1.0, -stepExponent_);
        const double farthest = std::max(
            {std::fabs(low_.x), std::fabs(low_.y), std::fabs(high_.x), std::fabs(high_.y)});
        if (std::isfinite(perUnit) && farthest * perUnit < kMostSteps) {
            stepsPerUnit_ = perUnit;
        }
    }
}

int ExactSigns::ExactTurn(PlanPoint a, PlanPoint b, PlanPoint c) const {
    if (stepsPerUnit_ > 0) {
        const std::int64_t cx = Steps(c.x);
        const std::int64_t cy = Steps(c.y);
        return exact::SignOf(Int128{Steps(a.x) - cx} * (Steps(b.y) - cy) -
                             Int128{Steps(a.y) - cy} * (Steps(b.x) - cx));
    }
    return (ExactDifference(a.x, c.x) * ExactDifference(b.y, c.y) -
            ExactDifference(a.y, c.y) * ExactDifference(b.x, c.x))
        .Sign();
}

int ExactSigns::ExactCircle(PlanPoint a, PlanPoint b, PlanPoint c, PlanPoint d) const {
    if (stepsPerUnit_ > 0) {
        const std::int64_t dx = Steps(d.x);
        const std::int64_t dy = Steps(d.y);
        const Int128 ax = Steps(a.x) - dx;
        const Int128 ay = Steps(a.y) - dy;
        const Int128 bx = Steps(b.x) - dx;
        const Int128 by = Steps(b.y) - dy;
        const Int128 cx = Steps(c.x) - dx;
        const Int128 cy = Steps(c.y) - dy;
        return exact::SignOf(exact::Product(bx * cy - cx * by, ax * ax + ay * ay) +
                             exact::Product(cx * ay - ax * cy, bx * bx + by * by) +
                             exact::Product(ax * by - bx * ay, cx * cx + cy * cy));
    }
    const auto ax = ExactDifference(a.x, d.x);
    const auto ay = ExactDifference(a.y, d.y);
    const auto bx = ExactDifference(b.x, d.x);
    const auto by = ExactDifference(b.y, d.y);
    const auto cx = ExactDifference(c.x, d.x);
    const auto cy = ExactDifference(c.y, d.y);
    return ((bx * cy - cx * by) * (ax * ax + ay * ay) + (cx * ay - ax * cy) * (bx * bx + by * by) +
            (ax * by - bx * ay) * (cx * cx + cy * cy))
        .Sign();
}

} // namespace terravo
