// Places with a height, and lines of them.
//
// Data: coordinates in data units. Method: plain values, shared by everything that reads, lays out,
// cuts or writes lines; a height that is not known is not a number.
#pragma once

#include "triangulation/TriangleList.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace terravo {

struct SpacePoint {
    double x = 0;
    double y = 0;
    double z = 0;

    bool operator==(const SpacePoint&) const = default;
};

/// The height of a vertex that has none: such a line lies on the surface as it is.
inline constexpr double kNoHeight = std::numeric_limits<double>::quiet_NaN();

inline bool HasHeight(const SpacePoint& point) {
    return !std::isnan(point.z);
}

inline PlanPoint PlanOf(const SpacePoint& point) {
    return {point.x, point.y};
}

struct SpaceLine {
    std::vector<SpacePoint> vertices;
    bool closed = false; // the first vertex is not repeated
    std::string name;    // may be empty

    bool operator==(const SpaceLine&) const = default;
};

/// How far a place lies from the side between two others.
inline double DistanceToSide(PlanPoint a, PlanPoint b, PlanPoint place) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double squared = dx * dx + dy * dy;
    const double along =
        squared > 0 ? std::clamp(((place.x - a.x) * dx + (place.y - a.y) * dy) / squared, 0.0, 1.0)
                    : 0;
    return std::hypot(a.x + along * dx - place.x, a.y + along * dy - place.y);
}

} // namespace terravo
