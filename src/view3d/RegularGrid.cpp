#include "view3d/RegularGrid.h"

#include <algorithm>
#include <vector>

namespace terravo {
namespace {

std::vector<double> DistinctValues(const Array1<double>& values, Index count) {
    std::vector<double> distinct(values.begin(), values.begin() + count);
    std::sort(distinct.begin(), distinct.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    return distinct;
}

Index PlaceOf(const std::vector<double>& sorted, double value) {
    return static_cast<Index>(std::lower_bound(sorted.begin(), sorted.end(), value) -
                              sorted.begin()) +
           1;
}

Array1<double> ToArray(const std::vector<double>& values) {
    Array1<double> array;
    for (const double value : values) {
        array.Append(value);
    }
    return array;
}

} // namespace

std::optional<RegularGrid> FindRegularGrid(const PointSet& points) {
    const std::vector<double> xs = DistinctValues(points.x, points.count);
    const std::vector<double> ys = DistinctValues(points.y, points.count);
    if (xs.size() < 2 || ys.size() < 2 ||
        xs.size() * ys.size() != static_cast<std::size_t>(points.count)) {
        return std::nullopt;
    }
    const auto nx = static_cast<Index>(xs.size());
    const auto ny = static_cast<Index>(ys.size());
    RegularGrid grid{ToArray(xs), ToArray(ys), Table<double>(nx, ny)};
    Table<char> taken(nx, ny, 0);
    for (Index k = 1; k <= points.count; ++k) {
        const Index i = PlaceOf(xs, points.x[k]);
        const Index j = PlaceOf(ys, points.y[k]);
        if (taken(i, j) != 0) {
            return std::nullopt;
        }
        taken(i, j) = 1;
        grid.z(i, j) = points.z[k];
    }
    return grid;
}

} // namespace terravo
