#include "analysis/AreaFigures.h"

#include "analysis/CompensatedSum.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace terravo {
namespace {

// Twice the area of a triangle, upright on the plan and in space.
struct Doubled {
    double plan;
    double rise; // of the normal beside the vertical: sqrt(nx^2 + ny^2)
};

Doubled DoubledAreas(const SpacePoint& a, const SpacePoint& b, const SpacePoint& c) {
    const double ux = b.x - a.x;
    const double uy = b.y - a.y;
    const double uz = b.z - a.z;
    const double vx = c.x - a.x;
    const double vy = c.y - a.y;
    const double vz = c.z - a.z;
    const double nx = uy * vz - vy * uz;
    const double ny = uz * vx - vz * ux;
    return {ux * vy - vx * uy, std::sqrt(nx * nx + ny * ny)};
}

// The ground at or above a height within one triangle.
struct Above {
    double area;
    double volume;
};

// @param z  ascending heights of the corners; the height lies above the first and not above the
//           last.
Above AboveHeight(double area, const std::array<double, 3>& z, double height) {
    const double high = z[2] - height;
    if (height >= z[1]) {
        const double cut = area * (high / (z[2] - z[1])) * (high / (z[2] - z[0]));
        return {z[2] > z[1] ? cut : 0, z[2] > z[1] ? cut * high / 3 : 0};
    }
    // All but the tip below; both parts of the rest are counted by themselves.
    const double middle = z[1] - height;
    const double toMiddle = middle / (z[1] - z[0]);
    const double toHigh = high / (z[2] - z[0]);
    const double wide = area * toMiddle;
    const double narrow = area * (1 - toMiddle) * toHigh;
    return {wide + narrow, wide * (middle + high) / 3 + narrow * high / 3};
}

struct RowSums {
    CompensatedSum area; // of triangles that the height cuts
    CompensatedSum volume;
    // Of triangles that lie wholly at or above this height, but not at or above the next.
    CompensatedSum wholeArea;
    CompensatedSum wholeVolume; // above this height
};

void AddTriangle(const MeasuredSurface& surface, Index t, const std::vector<double>& heights,
                 std::vector<RowSums>& sums) {
    const SpacePoint& a = surface.Corner(t, 1);
    const SpacePoint& b = surface.Corner(t, 2);
    const SpacePoint& c = surface.Corner(t, 3);
    const double area = DoubledAreas(a, b, c).plan / 2;
    std::array<double, 3> z{a.z, b.z, c.z};
    std::sort(z.begin(), z.end());
    const auto above = std::upper_bound(heights.begin(), heights.end(), z[0]);
    auto row = static_cast<std::size_t>(above - heights.begin());
    if (row > 0) {
        const double base = heights[row - 1];
        sums[row - 1].wholeArea.Add(area);
        sums[row - 1].wholeVolume.Add(area * ((z[0] - base + (z[1] - base) + (z[2] - base)) / 3));
    }
    for (; row < heights.size() && heights[row] < z[2]; ++row) {
        const Above part = AboveHeight(area, z, heights[row]);
        sums[row].area.Add(part.area);
        sums[row].volume.Add(part.volume);
    }
}

// From the highest row down: what lies wholly above a row stands on a slab above the row below.
std::vector<HypsometryRow> RowsOf(const std::vector<double>& heights,
                                  const std::vector<RowSums>& sums) {
    std::vector<HypsometryRow> rows(heights.size());
    CompensatedSum area;
    CompensatedSum volume;
    for (std::size_t k = heights.size(); k-- > 0;) {
        if (k + 1 < heights.size()) {
            volume.Add(area.Value() * (heights[k + 1] - heights[k]));
        }
        area.Add(sums[k].wholeArea);
        volume.Add(sums[k].wholeVolume);
        HypsometryRow& row = rows[k];
        row = {heights[k], area.Value() + sums[k].area.Value(),
               volume.Value() + sums[k].volume.Value()};
        const bool isLast = k + 1 == heights.size();
        row.bandArea = row.areaAbove - (isLast ? 0 : rows[k + 1].areaAbove);
        row.bandVolume = row.volumeAbove - (isLast ? 0 : rows[k + 1].volumeAbove);
    }
    return rows;
}

} // namespace

AreaFigures MeasureAreas(const MeasuredSurface& surface) {
    AreaFigures figures;
    CompensatedSum plan;
    CompensatedSum space;
    CompensatedSum perimeter;
    CompensatedSum moment;
    CompensatedSum rise;
    for (Index t = 1; t <= surface.triangles.count; ++t) {
        const std::array<SpacePoint, 3> corners{surface.Corner(t, 1), surface.Corner(t, 2),
                                                surface.Corner(t, 3)};
        const Doubled twice = DoubledAreas(corners[0], corners[1], corners[2]);
        plan.Add(twice.plan / 2);
        space.Add(std::sqrt(twice.plan * twice.plan + twice.rise * twice.rise) / 2);
        rise.Add(twice.rise / 2);
        moment.Add(twice.plan / 2 * ((corners[0].z + corners[1].z + corners[2].z) / 3));
        if (twice.plan > 0) {
            figures.maxSlope = std::max(figures.maxSlope, twice.rise / twice.plan);
        }
        for (int j = 1; j <= 3; ++j) {
            const SpacePoint& from = surface.Corner(t, j);
            const SpacePoint& to = surface.Corner(t, NextEdge(j));
            figures.x.Include(surface.origin.x + from.x);
            figures.y.Include(surface.origin.y + from.y);
            figures.z.Include(from.z);
            if (surface.triangles.Neighbour(j, t) <= 0) {
                perimeter.Add(std::hypot(to.x - from.x, to.y - from.y));
            }
        }
    }
    figures.triangles = surface.triangles.count;
    figures.plan = plan.Value();
    figures.surface = space.Value();
    figures.perimeter = perimeter.Value();
    figures.meanHeight = figures.plan > 0 ? moment.Value() / figures.plan : 0;
    figures.meanSlope = figures.plan > 0 ? rise.Value() / figures.plan : 0;
    return figures;
}

std::vector<HypsometryRow> MeasureHypsometry(const MeasuredSurface& surface,
                                             const std::vector<double>& heights) {
    if (surface.triangles.count == 0) {
        return {};
    }
    double lowest = surface.Corner(1, 1).z;
    for (Index t = 1; t <= surface.triangles.count; ++t) {
        lowest = std::min(
            {lowest, surface.Corner(t, 1).z, surface.Corner(t, 2).z, surface.Corner(t, 3).z});
    }
    std::vector<double> rows;
    if (heights.empty() || lowest < heights.front()) {
        rows.push_back(lowest);
    }
    rows.insert(rows.end(), heights.begin(), heights.end());
    std::vector<RowSums> sums(rows.size());
    for (Index t = 1; t <= surface.triangles.count; ++t) {
        AddTriangle(surface, t, rows, sums);
    }
    return RowsOf(rows, sums);
}

} // namespace terravo
