#include "analysis/PlaceFigures.h"

#include "survey/SurfaceHeight.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace terravo {
namespace {

// How fast a triangle's height grows to the east and to the north.
PlanPoint GradientOf(const PointSet& points, const Triangle& triangle) {
    const Index a = triangle.Vertex(1);
    const Index b = triangle.Vertex(2);
    const Index c = triangle.Vertex(3);
    const double ux = points.x[b] - points.x[a];
    const double uy = points.y[b] - points.y[a];
    const double uz = points.z[b] - points.z[a];
    const double vx = points.x[c] - points.x[a];
    const double vy = points.y[c] - points.y[a];
    const double vz = points.z[c] - points.z[a];
    const double area = ux * vy - vx * uy;
    return {(uz * vy - vz * uy) / area, (ux * vz - vx * uz) / area};
}

// Clockwise from north.
double BearingOf(double east, double north) {
    constexpr double kFullTurn = 360;
    const double degrees = std::atan2(east, north) * 180 / std::numbers::pi;
    return degrees < 0 ? std::fmod(degrees + kFullTurn, kFullTurn) : degrees;
}

} // namespace

std::optional<PlaceOnSurface> LookAt(const PointSet& points, const TriangleList& triangles,
                                     PlanPoint place) {
    if (triangles.count == 0) {
        return std::nullopt;
    }
    Index near = 1;
    const std::optional<double> height = SurfaceHeight(points, triangles, place, near);
    if (!height) {
        return std::nullopt;
    }
    const PlanPoint gradient = GradientOf(points, triangles.table[near]);
    const double slope = std::hypot(gradient.x, gradient.y);
    return PlaceOnSurface{*height, slope, slope > 0 ? BearingOf(-gradient.x, -gradient.y) : 0,
                          near};
}

NearestSurveyPoint NearestTo(const PointSet& points, Index surveyed, PlanPoint place) {
    NearestSurveyPoint nearest;
    nearest.distance = std::numeric_limits<double>::infinity();
    for (Index i = 1; i <= surveyed; ++i) {
        const double distance = std::hypot(points.x[i] - place.x, points.y[i] - place.y);
        if (distance < nearest.distance) {
            nearest = {i, distance};
        }
    }
    return nearest.number > 0 ? nearest : NearestSurveyPoint();
}

} // namespace terravo
