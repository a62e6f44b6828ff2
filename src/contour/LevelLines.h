// The contour lines of a point set on a drawing surface.
//
// Data: points, their kept triangulation, a LevelSet; a segment file that receives every segment.
// Method: each level in turn is cut, drawn and written in triangle order; labels, triangle edges
// and the hull come on top.
#pragma once

#include "contour/ContourRoutine.h"
#include "contour/SegmentFile.h"

#include <string>

namespace terravo {

/// Draws the contour lines on a surface whose scale is set.
/// @param levels    line widths below 1 and label sizes below 8 are raised in place.
/// @param segments  open; stays open.
/// @param state     receives the level count; gives the texts of errors.
/// @return empty on success, else the description of the error that ended the drawing (fewer than
///         2 levels, no triangulation, the segment file).
std::string DrawLevelLines(DrawSurface& surface, LevelSet& levels, const ContourInput& input,
                           SegmentFile& segments, RunState& state, ContourReport* report = nullptr);

} // namespace terravo
