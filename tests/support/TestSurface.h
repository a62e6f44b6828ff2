// A survey with its triangles, and what is asked of it in tests of regions and bands.
#pragma once

#include "contour/ContourSet.h"
#include "support/Surveys.h"
#include "survey/Survey.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

namespace terravo::test {

struct Surface {
    PointSet points;
    TriangleList triangles;

    explicit Surface(PointSet survey) : points(std::move(survey)) {
        triangles = Survey(points).Triangulation().triangles;
    }

    [[nodiscard]] PlanPoint At(int j, Index t) const {
        const Index p = triangles.Vertex(j, t);
        return {points.x[p], points.y[p]};
    }
    [[nodiscard]] double Height(int j, Index t) const { return points.z[triangles.Vertex(j, t)]; }
    [[nodiscard]] double AreaOfTriangle(Index t) const {
        const PlanPoint a = At(1, t);
        const PlanPoint b = At(2, t);
        const PlanPoint c = At(3, t);
        return ((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y)) / 2;
    }
};

// Of the part of a triangle at or above a level.
inline double AreaAbove(const Surface& surface, Index t, double level) {
    std::array z{surface.Height(1, t), surface.Height(2, t), surface.Height(3, t)};
    std::sort(z.begin(), z.end());
    const auto [low, middle, high] = z;
    const double area = surface.AreaOfTriangle(t);
    if (level <= low) {
        return area;
    }
    if (level > high) {
        return 0;
    }
    return level > middle
               ? area * (high - level) / (high - low) * ((high - level) / (high - middle))
               : area - area * (level - low) / (high - low) * ((level - low) / (middle - low));
}

inline double AreaAbove(const Surface& surface, double level) {
    double area = 0;
    for (Index t = 1; t <= surface.triangles.count; ++t) {
        area += AreaAbove(surface, t, level);
    }
    return area;
}

/// Of all levels, increasing, with repeats left out.
inline ContourSet ContoursOf(const Surface& surface, const std::vector<double>& values) {
    LevelSet levels;
    for (const double value : values) {
        levels.Append({value, 0, 1, {}, 0, 10});
    }
    return MakeContourSet(surface.points, surface.triangles, levels).value();
}

// Whole and broken ones, at and beyond both ends.
inline std::vector<double> LevelsOver(const PointSet& points) {
    const double low = points.extentZ.min;
    const double high = points.extentZ.max;
    std::vector<double> levels = {low - 1, low, std::nextafter(low, high), high, high + 1};
    for (int i = 1; i < 12; ++i) {
        levels.push_back(std::lerp(low, high, i / 12.0));
        levels.push_back(std::floor(levels.back()));
    }
    return levels;
}

// The surface without the triangles that are not wanted, linked anew.
template <class Wanted>
Surface Without(const Surface& surface, Wanted wanted) {
    Surface result = surface;
    std::map<std::pair<Index, Index>, TriangleEdge> edges; // by their points
    result.triangles.count = 0;
    for (Index t = 1; t <= surface.triangles.count; ++t) {
        const PlanPoint a = surface.At(1, t);
        if (wanted(a, surface.At(2, t), surface.At(3, t))) {
            const Index n = ++result.triangles.count;
            result.triangles.table[n].vertices = surface.triangles.table[t].vertices;
            for (int j = 1; j <= 3; ++j) {
                edges[{surface.triangles.Vertex(j, t), surface.triangles.Vertex(NextEdge(j), t)}] =
                    {n, j};
            }
        }
    }
    std::map<Index, TriangleEdge> hull; // by the point that they begin with
    for (const auto& [ends, edge] : edges) {
        if (!edges.contains({ends.second, ends.first})) {
            hull[ends.first] = edge;
        }
    }
    for (const auto& [ends, edge] : edges) {
        const auto across = edges.find({ends.second, ends.first});
        result.triangles.table[edge.triangle].SetNeighbour(
            edge.edge,
            across != edges.end() ? across->second.triangle : LinkToHullEdge(hull.at(ends.second)));
    }
    return result;
}

/// 1600 points, 10 apart.
inline Surface SurfaceWithHoles(bool wholeMetres) {
    const auto isIn = [](PlanPoint p, double x1, double y1, double x2, double y2) {
        return p.x >= x1 && p.x <= x2 && p.y >= y1 && p.y <= y2;
    };
    const Surface all(HillySurvey(GridPoints(40), wholeMetres));
    return Without(all, [&](PlanPoint a, PlanPoint b, PlanPoint c) {
        for (const auto& [x1, y1, x2, y2] :
             {std::array{50., 60., 150., 200.}, std::array{180., 30., 370., 80.},
              std::array{200., 120., 230., 400.}}) {
            if (isIn(a, x1, y1, x2, y2) && isIn(b, x1, y1, x2, y2) && isIn(c, x1, y1, x2, y2)) {
                return false;
            }
        }
        return true;
    });
}

inline Surface SurfaceInParts(bool wholeMetres) {
    const Surface all(HillySurvey(GridPoints(40), wholeMetres));
    return Without(all, [](PlanPoint a, PlanPoint b, PlanPoint c) {
        return (a.x <= 150 && b.x <= 150 && c.x <= 150) || (a.x >= 170 && b.x >= 170 && c.x >= 170);
    });
}

} // namespace terravo::test
