// Turns that keep their digits, and heights on sides and triangles.
//
// Data: places near an origin. Method: a turn in doubles that is small beside its products is
// computed again as an exact sum of products and rounded once.
#pragma once

#include "triangulation/SpaceLine.h"

#include <array>

namespace terravo {

/// Twice the area of a triangle, negative where it runs clockwise; off by less than a
/// billionth of a thousandth of itself.
double TurnValue(PlanPoint a, PlanPoint b, PlanPoint c);

/// A place between two corners.
SpacePoint PointBetween(const SpacePoint& from, const SpacePoint& to, double part);

/// Where a side between two corners on different hands of the line from p to q meets it.
SpacePoint CrossingWithLine(const SpacePoint& from, const SpacePoint& to, PlanPoint p, PlanPoint q);

/// The height on a side at the place on it that is nearest to another.
double HeightOnSide(const SpacePoint& from, const SpacePoint& to, PlanPoint place);

/// The height of the plane through three corners.
/// @param corners  counter-clockwise.
double HeightOnTriangle(const std::array<SpacePoint, 3>& corners, PlanPoint place);

} // namespace terravo
