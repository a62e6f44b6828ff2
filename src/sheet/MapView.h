// Where places of the survey are on the paper.
//
// Data: one scale for x and y, a turn, and a place of the survey that lies in the middle of the
// map. Method: distances from that place are formed first, in the survey's units, so that
// coordinates of a national grid lose nothing.
#pragma once

#include "sheet/SheetScene.h"
#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

namespace terravo {

struct MapView {
    double millimetresPerUnit = 1;
    double cosine = 1; // of the counter-clockwise turn
    double sine = 0;
    PlanPoint centre;  // of the survey
    SheetPoint middle; // on the paper

    [[nodiscard]] SheetPoint ToPaper(double x, double y) const {
        const double dx = (x - centre.x) * millimetresPerUnit;
        const double dy = (y - centre.y) * millimetresPerUnit;
        return {middle.x + (dx * cosine - dy * sine), middle.y - (dx * sine + dy * cosine)};
    }
    [[nodiscard]] PlanPoint ToPlan(SheetPoint place) const {
        const double right = (place.x - middle.x) / millimetresPerUnit;
        const double up = (middle.y - place.y) / millimetresPerUnit;
        return {centre.x + right * cosine + up * sine, centre.y - right * sine + up * cosine};
    }
};

/// The box of the points once they are turned, around a centre, in data units.
struct TurnedExtent {
    double width = 0;
    double height = 0;
    PlanPoint centre; // its middle, of the survey
};

/// @param rotation  radians, counter-clockwise.
TurnedExtent ExtentOf(const PointSet& points, double rotation);

} // namespace terravo
