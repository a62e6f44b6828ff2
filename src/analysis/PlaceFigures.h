// What a surface is like at a place.
//
// Data: points and triangles. Method: the plane of the triangle that holds the place; all points
// for the nearest.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

#include <optional>

namespace terravo {

struct PlaceOnSurface {
    double height = 0;
    double slope = 0;  // tangent
    double aspect = 0; // degrees clockwise from north, 0 to below 360, downhill; of level ground 0
    Index triangle = 0;
};

/// @return nothing beside the triangles.
std::optional<PlaceOnSurface> LookAt(const PointSet& points, const TriangleList& triangles,
                                     PlanPoint place);

struct NearestSurveyPoint {
    Index number = 0;    // in use; 0: there is none
    double distance = 0; // in plan
};

/// @param surveyed  points 1..surveyed are of the survey.
NearestSurveyPoint NearestTo(const PointSet& points, Index surveyed, PlanPoint place);

} // namespace terravo
