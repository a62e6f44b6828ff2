#include "sheet/MapView.h"

#include <cmath>

namespace terravo {
namespace {

bool Has(const Extent& extent, double value) {
    return value >= extent.min && value <= extent.max;
}

} // namespace

TurnedExtent ExtentOf(const PointSet& points, double rotation) {
    if (points.count == 0) {
        return {};
    }
    const double cosine = std::cos(rotation);
    const double sine = std::sin(rotation);
    const double x0 = points.x[1];
    const double y0 = points.y[1];
    Extent right;
    Extent up;
    for (Index i = 1; i <= points.count; ++i) {
        if (!Has(points.extentX, points.x[i]) || !Has(points.extentY, points.y[i])) {
            continue; // corners of hidden triangles alone
        }
        const double dx = points.x[i] - x0;
        const double dy = points.y[i] - y0;
        right.Include(dx * cosine - dy * sine);
        up.Include(dx * sine + dy * cosine);
    }
    const double r = (right.min + right.max) / 2;
    const double u = (up.min + up.max) / 2;
    return {right.max - right.min,
            up.max - up.min,
            {x0 + r * cosine + u * sine, y0 - r * sine + u * cosine}};
}

} // namespace terravo
