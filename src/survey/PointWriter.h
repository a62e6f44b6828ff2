// Points as a clean text file: x, y, z on a line, separated by commas.
//
// Data: a point set; a file. Method: the shortest text that keeps each number, so that the file
// reads back to the same points; an old file stays until the new one is complete.
#pragma once

#include "survey/PointSet.h"
#include "util/OutputFile.h"

namespace terravo {

/// Writes all points in their order. Throws AppError.
void WritePoints(const OutputTarget& target, const PointSet& points);

} // namespace terravo
