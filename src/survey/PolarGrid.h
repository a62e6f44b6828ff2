// Test data from a table of heights over angle and radius.
//
// Data: "PolarData_02.txt" in the work folder, fields separated by tabs. The first line holds a
// radius in each field but the first; every further line an angle and then a height for each
// radius. A text that is not a number is 0, and so is a missing field. Method: a point for every
// height, radius by radius and within a radius line by line.
#pragma once

#include "survey/PointSet.h"

#include <string>

namespace terravo {

/// Fills the point set from the table and lists the points, one a line in printed form, in
/// "Quorin_Points.txt" beside it. Throws AppError when the table cannot be read, and leaves the
/// points as they were; also when the list cannot be written.
/// @param workFolder  ends in its separator.
void ConvertPolarGrid(const std::string& workFolder, PointSet& points);

} // namespace terravo
