// The contour lines of a survey on a drawing surface.
//
// Data: a survey with its triangulation, a LevelSet. Method: each level in turn is cut, drawn and
// handed to whoever writes the segments, in triangle order; labels, triangle edges and the hull
// come on top.
#pragma once

#include "contour/ContourRoutine.h"
#include "contour/LevelCut.h"

#include <functional>
#include <vector>

namespace terravo {

/// Takes the pieces of one level after they were drawn. May throw, which ends the drawing.
using LevelSink = std::function<void(double level, const std::vector<LevelPiece>& pieces)>;

/// Draws the contour lines on a surface whose scale is set.
/// @param levels  line widths below 1 and label sizes below 8 are raised in place.
/// @param sink    called for each level in turn; may be empty.
/// @return an error for too few levels, without a triangulation, and when the sink fails.
ContourReport DrawLevelLines(DrawSurface& surface, LevelSet& levels, const ContourInput& input,
                             const LevelSink& sink = {});

} // namespace terravo
