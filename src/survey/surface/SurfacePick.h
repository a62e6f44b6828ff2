// What lies at a place of the surface: a point, a side, a triangle.
//
// Data: the surface as it is shown, a place and how far a hand may be off. Method: the place is
// found by a walk from where the last one was; of its triangle the nearest corner and side count.
#pragma once

#include "survey/Survey.h"

#include <optional>

namespace terravo {

struct PickedSide {
    TriangleEdge edge;
    PlanPoint from;
    PlanPoint to;
    bool isConstrained = false;
};

class SurfacePick {
public:
    /// @param survey  looked at in each call; outlives this.
    explicit SurfacePick(const Survey& survey) : survey_(survey) {}

    /// The point nearest to a place, within reach.
    /// @return its number in the surface; nothing where none is near.
    [[nodiscard]] std::optional<Index> PointAt(PlanPoint place, double reach);
    /// The side of the triangle at a place that is nearest to it.
    [[nodiscard]] std::optional<PickedSide> SideAt(PlanPoint place);
    /// The height of the surface; nothing beside it.
    [[nodiscard]] std::optional<double> HeightAt(PlanPoint place);

private:
    const Survey& survey_;
    Index near_ = 1;
};

/// The side that a flip would put in the place of another one; nothing where there is none: at the
/// rim, on a line, or where the four corners are not convex.
std::optional<HeldSide> FlippedSide(const ShownSurface& shown, const PickedSide& side);

} // namespace terravo
