// The bands between the levels, filled.
//
// Data: as for the lines; per triangle the cut segments in level order, per piece a convex polygon.
// Method: each triangle is divided along its cut segments into a lowest, middle and highest pieces;
// a piece is painted in the colour of the level at or just below its mean height. The triangles and
// the hull come on top, so they are never covered.
#pragma once

#include "contour/LevelLines.h"
#include "util/Services.h"

namespace terravo {

/// Fills the bands on a surface whose scale is set.
/// @param messages  of the sort.
/// @return an error for too few levels and for a fault of the triangulation. Points without a
///         triangulation draw nothing and are no error here.
ContourReport DrawLevelAreas(DrawSurface& surface, LevelSet& levels, const ContourInput& input,
                             MessageService& messages);

/// Colour of a piece by its mean height: that of the level at or just below it. Below the lowest it
/// is colourBelow, and without one that of the top level.
Colour BandColour(const LevelSet& levels, double meanHeight,
                  const std::optional<Colour>& colourBelow = std::nullopt);

} // namespace terravo
