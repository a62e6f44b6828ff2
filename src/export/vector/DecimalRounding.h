// Coordinates rounded to a number of decimals.
//
// Data: a count of decimals, or none. Method: the value is brought to whole units of the last
// decimal and divided by their number in one: the quotient of two doubles without an error is the
// double nearest to the decimal number, whose shortest text therefore has no more decimals.
#pragma once

#include "contour/TriangleCut.h"
#include "triangulation/TriangleList.h"
#include "util/DecimalText.h"

#include <cmath>
#include <optional>

namespace terravo {

class DecimalRounding {
public:
    explicit DecimalRounding(std::optional<int> decimals)
        : units_(decimals ? DecimalText::kPowersOfTen[static_cast<std::size_t>(*decimals)] : 0) {}

    /// A value whose doubles are coarser than the last decimal stays as it is.
    [[nodiscard]] double operator()(double value) const {
        constexpr double kLargestExact = 9007199254740992.0; // 2^53
        const double whole = std::round(value * units_);
        return units_ == 0 || !(std::fabs(whole) < kLargestExact) ? value : whole / units_;
    }
    [[nodiscard]] PlanPoint operator()(PlanPoint p) const { return {(*this)(p.x), (*this)(p.y)}; }
    [[nodiscard]] SpacePoint operator()(const SpacePoint& p) const {
        return {(*this)(p.x), (*this)(p.y), (*this)(p.z)};
    }
    /// Whether anything is rounded.
    [[nodiscard]] bool Rounds() const { return units_ != 0; }

private:
    double units_; // in one; 0: nothing is rounded
};

} // namespace terravo
