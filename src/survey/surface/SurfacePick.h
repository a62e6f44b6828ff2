// What lies at a place of the surface: a point, a side, a height.
//
// Data: the surface as it is shown, or the live one while that is ahead of it; a place and how far
// a hand may be off. Method: the place is found by a walk from where the last one was; of its
// triangle the nearest corner and side count.
#pragma once

#include "survey/surface/LiveSurface.h"

#include <memory>
#include <optional>

namespace terravo {

struct PickedPoint {
    SpacePoint place;
    Index number = 0; // among all survey points; 0: a line has added it
};

struct PickedSide {
    PlanPoint from;
    PlanPoint to;
    bool isConstrained = false;
    /// The side that a flip would put in its place; nothing where there is none: at the rim, on a
    /// line, or where the four corners are not convex.
    std::optional<HeldSide> flipped;
};

class SurfacePick {
public:
    /// @param survey  looked at in each call; outlives this.
    /// @param live    where there is one, it is asked; outlives this.
    explicit SurfacePick(const Survey& survey, const std::unique_ptr<LiveSurface>* live = nullptr)
        : survey_(survey), live_(live) {}

    /// The point nearest to a place, within reach; nothing where none is near.
    [[nodiscard]] std::optional<PickedPoint> PointAt(PlanPoint place, double reach);
    /// The side of the triangle at a place that is nearest to it.
    [[nodiscard]] std::optional<PickedSide> SideAt(PlanPoint place);
    /// The height of the surface; nothing beside it.
    [[nodiscard]] std::optional<double> HeightAt(PlanPoint place);

private:
    [[nodiscard]] std::optional<TriangleHere> TriangleAt(PlanPoint place);
    [[nodiscard]] std::optional<TriangleHere> ShownTriangleAt(PlanPoint place);

    const Survey& survey_;
    const std::unique_ptr<LiveSurface>* live_;
    Index near_ = 1;
};

} // namespace terravo
