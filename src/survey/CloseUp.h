// A point and what lies around it, for a look from nearby.
//
// Data: the points and triangle edges within a radius of a point of the survey. Method: the radius
// takes in the nearest points, however dense the survey is there; excluded points are shown as
// well, the triangles are those of the points in use.
#pragma once

#include "survey/Survey.h"

#include <string>
#include <vector>

namespace terravo {

struct CloseUp {
    struct Edge {
        PlanPoint from;
        PlanPoint to;
    };
    struct Spot {
        Index point = 0; // among all points
        PlanPoint place;
        double z = 0;
        bool isExcluded = false;
    };
    PlanPoint centre;
    double radius = 0;       // data units, positive: what should be seen at least
    std::vector<Edge> edges; // these and the spots up to three times as far to each side
    std::vector<Spot> spots; // the point itself is the first
};

/// @param point  number among all points. Edges are shown where the triangulation has been made.
CloseUp MakeCloseUp(const Survey& survey, Index point);

} // namespace terravo
