// How far pieces leave the height of their level.
//
// Data: the control points of a piece and the two edges of its triangle that it joins; the largest
// error so far. Method: the surface is linear in a triangle, so along the piece its height is a
// cubic with the heights of the control points; where these are larger than the largest error so
// far, the extremes of the cubic are computed.
#pragma once

#include "contour/smoothing/Slider.h"

#include <array>

namespace terravo::smoothing {

/// The larger of each.
SmoothError Larger(const SmoothError& a, const SmoothError& b);

class ErrorMeter {
public:
    explicit ErrorMeter(const LevelSpacing& spacing) : spacing_(spacing) {}

    /// Takes a piece in, which goes from one edge to another.
    void Take(std::span<const PlanPoint, 4> controls, const Slider& from, double fromPart,
              const Slider& to, double toPart);

    [[nodiscard]] const SmoothError& Worst() const { return worst_; }

private:
    void Include(double height);

    LevelSpacing spacing_;
    SmoothError worst_;
};

} // namespace terravo::smoothing
