#include "view3d/RegularGrid.h"

#include "util/modUtilita.h"

#include <algorithm>
#include <vector>

namespace terravo {
namespace {

// What one coordinate is where the other is that of the first point, ascending.
std::vector<double> ValuesInLine(const Array1<double>& values, const Array1<double>& others,
                                 Index count) {
    std::vector<double> inLine;
    for (Index k = 1; k <= count; ++k) {
        if (modUtilita::IsExactly(others[k], others[1])) {
            inLine.push_back(values[k]);
        }
    }
    std::sort(inLine.begin(), inLine.end());
    return inLine;
}

// Counted from 1; 0 when the value is none of them.
Index PlaceOf(const std::vector<double>& sorted, double value) {
    const auto place = std::lower_bound(sorted.begin(), sorted.end(), value);
    const bool isThere = place != sorted.end() && modUtilita::IsExactly(*place, value);
    return isThere ? static_cast<Index>(place - sorted.begin()) + 1 : 0;
}

Array1<double> ToArray(const std::vector<double>& values) {
    Array1<double> array;
    for (const double value : values) {
        array.Append(value);
    }
    return array;
}

} // namespace

std::optional<RegularGrid> FindRegularGrid(const Array1<double>& x, const Array1<double>& y,
                                           const Array1<double>& z, Index count) {
    const std::vector<double> xs = ValuesInLine(x, y, count);
    const std::vector<double> ys = ValuesInLine(y, x, count);
    if (xs.size() < 2 || ys.size() < 2 ||
        xs.size() * ys.size() != static_cast<std::size_t>(count)) {
        return std::nullopt;
    }
    const auto nx = static_cast<Index>(xs.size());
    const auto ny = static_cast<Index>(ys.size());
    RegularGrid grid{ToArray(xs), ToArray(ys), Table<double>(nx, ny)};
    Table<char> taken(nx, ny, 0);
    for (Index k = 1; k <= count; ++k) {
        const Index i = PlaceOf(xs, x[k]);
        const Index j = PlaceOf(ys, y[k]);
        if (i == 0 || j == 0 || taken(i, j) != 0) {
            return std::nullopt;
        }
        taken(i, j) = 1;
        grid.z(i, j) = z[k];
    }
    return grid;
}

} // namespace terravo
