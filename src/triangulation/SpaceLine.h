// Places with a height, and lines of them.
//
// Data: coordinates in data units. Method: plain values, shared by everything that reads, lays out,
// cuts or writes lines; a height that is not known is not a number.
#pragma once

#include "triangulation/TriangleList.h"

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

} // namespace terravo
