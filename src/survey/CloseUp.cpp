#include "survey/CloseUp.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

constexpr std::size_t kWantedSpots = 24;
constexpr double kReach = 3;             // radii
constexpr std::size_t kMostSpots = 1000; // many may have the same place
constexpr std::size_t kMostEdges = 5000;

// To the point that is so many points away; where many repeat it, to the first beside them.
double RadiusAround(const PointSet& points, PlanPoint centre) {
    std::vector<double> distances(static_cast<std::size_t>(points.count));
    double nearest = 0;
    for (Index i = 1; i <= points.count; ++i) {
        const double distance = std::hypot(points.x[i] - centre.x, points.y[i] - centre.y);
        distances[static_cast<std::size_t>(i) - 1] = distance;
        if (distance > 0 && (nearest == 0 || distance < nearest)) {
            nearest = distance;
        }
    }
    const auto wanted = distances.begin() +
                        static_cast<std::ptrdiff_t>(std::min(kWantedSpots, distances.size() - 1));
    std::nth_element(distances.begin(), wanted, distances.end());
    const double radius = std::max(*wanted, nearest);
    return radius > 0 ? radius : 1;
}

void AddSpots(const Survey& survey, Index point, CloseUp& view) {
    const PointSet& points = survey.AllPoints();
    const auto add = [&](Index i) {
        view.spots.push_back({i, {points.x[i], points.y[i]}, points.z[i], survey.IsExcluded(i)});
    };
    add(point);
    for (Index i = 1; i <= points.count && view.spots.size() < kMostSpots; ++i) {
        if (i != point && std::fabs(points.x[i] - view.centre.x) <= kReach * view.radius &&
            std::fabs(points.y[i] - view.centre.y) <= kReach * view.radius) {
            add(i);
        }
    }
}

// A short way round the view; an edge may cross it though both ends are outside.
bool MayBeSeen(PlanPoint a, PlanPoint b, const CloseUp& view) {
    const auto misses = [&](double from, double to, double middle) {
        return std::max(from, to) < middle - kReach * view.radius ||
               std::min(from, to) > middle + kReach * view.radius;
    };
    return !misses(a.x, b.x, view.centre.x) && !misses(a.y, b.y, view.centre.y);
}

void AddEdges(const Survey& survey, CloseUp& view) {
    const std::optional<ShownSurface> made = survey.KnownSurface();
    if (!made) {
        return;
    }
    const PointSet& points = made->points;
    for (Index t = 1; t <= made->triangles.count && view.edges.size() < kMostEdges; ++t) {
        for (int j = 1; j <= 3; ++j) {
            const Index a = made->triangles.Vertex(j, t);
            const Index b = made->triangles.Vertex(NextEdge(j), t);
            const bool isFirst = a < b || made->triangles.Neighbour(j, t) < 0;
            const PlanPoint from{points.x[a], points.y[a]};
            const PlanPoint to{points.x[b], points.y[b]};
            if (isFirst && MayBeSeen(from, to, view)) {
                view.edges.push_back({from, to});
            }
        }
    }
}

} // namespace

CloseUp MakeCloseUp(const Survey& survey, Index point) {
    const PointSet& points = survey.AllPoints();
    CloseUp view;
    view.centre = {points.x[point], points.y[point]};
    view.radius = RadiusAround(points, view.centre);
    AddSpots(survey, point, view);
    AddEdges(survey, view);
    return view;
}

} // namespace terravo
