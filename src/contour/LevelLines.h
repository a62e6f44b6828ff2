// The contour lines of a point set on a drawing surface.
//
// Data: points, their kept triangulation, a LevelSet; a segment file that receives every segment.
// Method: each level in turn is cut, drawn and written in triangle order; labels, triangle edges
// and the hull come on top.
#pragma once

#include "contour/LevelSet.h"
#include "contour/SegmentFile.h"
#include "plot2d/DrawSurface.h"
#include "triangulation/KeptTriangulation.h"
#include "util/RunState.h"

#include <atomic>
#include <string>

namespace terravo {

/// What both contour routines work on.
struct ContourInput {
    const PointSet& points;
    KeptTriangulation& triangulation;
    bool showTriangles = false;
    bool showPerimeter = false;
    const std::atomic<bool>& stopRequested; // looked at between levels
    ProgressCallback progress = {};
};

/// Seconds spent in the parts of one contour drawing, and how it ended.
struct ContourReport {
    double triangulate = 0;
    double cut = 0;
    double draw = 0;
    double write = 0;
    int errorNumber = 0; // of the AppError that ended it, see ErrorNumber
};

/// Draws the contour lines on a surface whose scale is set.
/// @param levels    line widths below 1 and label sizes below 8 are raised in place.
/// @param segments  open; stays open.
/// @param state     receives the level count; gives the texts of errors.
/// @return empty on success, else the description of the error that ended the drawing (fewer than
///         2 levels, no triangulation, the segment file).
std::string DrawLevelLines(DrawSurface& surface, LevelSet& levels, const ContourInput& input,
                           SegmentFile& segments, RunState& state, ContourReport* report = nullptr);

/// Draws every triangle edge and every hull edge as asked for, in white, one pixel wide.
void DrawTriangleOverlay(DrawSurface& surface, const ContourInput& input,
                         const TriangleList& triangles);

/// Checks the level count and the triangulation before a contour drawing; throws AppError 1001.
const TriangleList& PrepareContours(const LevelSet& levels, const ContourInput& input,
                                    RunState& state);

} // namespace terravo
