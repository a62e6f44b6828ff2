// What must hold of the pieces of a level and of the lines that they are joined to.
#pragma once

#include "contour/ContourSet.h"
#include "contour/LevelCut.h"

#include <string>
#include <vector>

namespace terravo::test {

/// Makes the contours with and without repeated vertices, cuts every triangle by itself, and
/// checks: each piece is passed once, in its direction, by lines that end at the edge of the
/// surface or nowhere; vertices lie where the level crosses their edge; without repeats no two
/// neighbours are in one place, what was passed one way is still passed so, what was passed both
/// ways is a ridge once, from fork to fork, and lines without any length are isolated points.
/// @return the first thing that does not hold, or an empty text.
std::string ContourFaultOf(const PointSet& points, const TriangleList& triangles,
                           const LevelSet& levels);

/// Whether pieces are those of every triangle against the level, in the order of the triangles.
bool ArePiecesOf(const PointSet& points, const TriangleList& triangles, double level,
                 const std::vector<LevelPiece>& pieces);

} // namespace terravo::test
