// Points that form a regular grid, in whatever order they come.
//
// Data: the coordinates of points; their distinct x and y values and a table of heights. Method:
// the points in line with the first one give the values; every pair of one of the x values and one
// of the y values must be the place of exactly one point.
#pragma once

#include "util/Array1.h"

#include <optional>

namespace terravo {

struct RegularGrid {
    Array1<double> x; // ascending
    Array1<double> y; // ascending
    Table<double> z;  // (i, j), i over x, j over y
};

/// The grid that the first points of three arrays form; nothing when a node is missing or doubled,
/// or when there are fewer than two rows or columns.
std::optional<RegularGrid> FindRegularGrid(const Array1<double>& x, const Array1<double>& y,
                                           const Array1<double>& z, Index count);

} // namespace terravo
