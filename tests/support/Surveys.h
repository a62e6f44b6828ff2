// Small surveys for the contour tests.
#pragma once

#include "support/PointClouds.h"
#include "survey/PointSet.h"

#include <cmath>
#include <initializer_list>
#include <string>

namespace terravo::test {

inline PointSet MakeSurvey(std::initializer_list<std::array<double, 3>> rows) {
    PointSet points;
    points.sourceName = "survey.dat";
    for (const auto& row : rows) {
        points.Append(row[0], row[1], row[2]);
    }
    return points;
}

/// Hills over plan positions; with whole metres many points lie exactly on levels.
inline PointSet HillySurvey(const Array1<PlanPoint>& plan, bool wholeMetres) {
    PointSet points;
    points.sourceName = "hills.dat";
    for (const PlanPoint& p : plan) {
        const double z = 100 + 30 * std::sin(p.x / 90) * std::cos(p.y / 70) + p.x / 40;
        points.Append(p.x, p.y, wholeMetres ? std::floor(z) : z);
    }
    return points;
}

} // namespace terravo::test
