// Plan positions in the order of a curve that fills the plane.
//
// Data: plan positions. Method: each gets a 64-bit place along a Hilbert curve over the extent,
// four bits of x and of y at a time from a table, and the places are sorted. Neighbours along the
// curve are neighbours on the ground, so work in this order finds what it needs in the cache.
#pragma once

#include "triangulation/TriangleList.h"

#include <optional>

namespace terravo {

/// Smallest rectangle along the axes about some positions, data units.
struct PlanExtent {
    PlanPoint low;
    PlanPoint high;

    /// The longer side.
    [[nodiscard]] double Span() const;
};

/// Extent of the positions, at least one.
/// @return nothing when a coordinate is not finite.
std::optional<PlanExtent> ExtentOf(const Array1<PlanPoint>& coord);

/// Numbers of the positions in the order of the curve; positions in one cell of it, so equal ones
/// too, keep the order of their numbers.
Array1<Index> CurveOrder(const Array1<PlanPoint>& coord, const PlanExtent& extent);

} // namespace terravo
