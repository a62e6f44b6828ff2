// Grids of heights as text: ESRI ASCII grids and Surfer's ASCII grids (DSAA).
//
// Data: a header of counts, corners and spacing, then the heights of the nodes. Method: each node
// with a height is a point; in cells that are given by their corner it lies in the middle.
#pragma once

#include "survey/import/PointImport.h"
#include "survey/import/TextSource.h"

namespace terravo {

/// Reads the nodes of a grid, the void ones left out and counted.
/// @param plan  its decimal sign and its voids.
/// @return what is wrong with the grid; the points are then worth nothing.
std::optional<ReadFailure> ReadGrid(TextSource& source, GridFormat format, const ImportPlan& plan,
                                    PointSet& points, ImportReport& report, const StopToken& stop);

} // namespace terravo
