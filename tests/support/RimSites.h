// Surfaces whose rims are not one convex ring.
//
// Data: hilly points on a lattice of 10 m, and which cells belong to the site. Method: all points
// are triangulated; a triangle is hidden where its cell does not belong.
#pragma once

#include "support/Surveys.h"
#include "triangulation/TriangulatePoints.h"
#include "triangulation/constrained/VisibleSurface.h"

#include <functional>
#include <string>
#include <vector>

namespace terravo::test {

struct RimSite {
    std::string name;
    std::function<bool(int, int)> holdsCell; // column and row, from 0
    int cells = 0;                           // that belong
    int outerRims = 0;
    int holeRims = 0;
};

inline const std::vector<RimSite>& RimSites() {
    static const std::vector<RimSite> sites{
        {"convex", [](int, int) { return true; }, 36, 1, 0},
        {"L-shaped", [](int i, int j) { return i < 3 || j < 3; }, 27, 1, 0},
        {"hole", [](int i, int j) { return i < 2 || i > 3 || j < 2 || j > 3; }, 32, 1, 1},
        {"two parts", [](int i, int) { return i != 2; }, 30, 2, 0},
        {"two cells touch", [](int i, int j) { return i == j && (i == 2 || i == 3); }, 2, 2, 0},
        {"two holes touch", [](int i, int j) { return i != j || (i != 2 && i != 3); }, 34, 1, 1},
        {"hole touches the rim",
         [](int i, int j) { return (i > 0 || j > 0) && (i != 1 || j != 1); }, 34, 1, 0},
        {"courtyard",
         [](int i, int j) {
             const bool isBuilding = i > 0 && i < 5 && j > 0 && j < 5;
             return !isBuilding || (i > 1 && i < 4 && j > 1 && j < 4);
         },
         24, 2, 1},
    };
    return sites;
}

/// A surface with all of its points, of which only some triangles are visible.
struct RimSurface {
    PointSet points;
    Array1<PlanPoint> plan;
    TriangleList all;
    HiddenTriangles hidden;
    TriangleList visible;
};

inline PlanPoint CentreOf(const Array1<PlanPoint>& plan, const TriangleList& triangles, Index t) {
    const auto& [a, b, c] = triangles.table[t].vertices;
    return {(plan[a].x + plan[b].x + plan[c].x) / 3, (plan[a].y + plan[b].y + plan[c].y) / 3};
}

inline RimSurface MakeRimSurface(const RimSite& site, bool wholeMetres = false) {
    constexpr int kCells = 6;
    constexpr double kStep = 10;
    RimSurface surface;
    for (int j = 0; j <= kCells; ++j) {
        for (int i = 0; i <= kCells; ++i) {
            surface.plan.Append({kStep * i, kStep * j});
        }
    }
    surface.points = HillySurvey(surface.plan, wholeMetres);
    surface.all = TriangulatePoints(surface.plan).triangles;
    surface.hidden = HiddenTriangles(surface.all.count, 0);
    for (Index t = 1; t <= surface.all.count; ++t) {
        const PlanPoint centre = CentreOf(surface.plan, surface.all, t);
        const bool isHeld =
            site.holdsCell(static_cast<int>(centre.x / kStep), static_cast<int>(centre.y / kStep));
        surface.hidden[t] = isHeld ? 0 : 1;
    }
    surface.visible = VisibleTriangles(surface.all, surface.hidden);
    return surface;
}

/// Twice the area of the triangle of three places, positive when they turn left.
inline double TwiceArea(PlanPoint a, PlanPoint b, PlanPoint c) {
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
}

inline double AreaOf(const Array1<PlanPoint>& plan, const TriangleList& triangles) {
    double twice = 0;
    for (Index t = 1; t <= triangles.count; ++t) {
        const auto& [a, b, c] = triangles.table[t].vertices;
        twice += TwiceArea(plan[a], plan[b], plan[c]);
    }
    return twice / 2;
}

} // namespace terravo::test
