// What the contour routines share: what they work on, how they end, and what comes on top.
#pragma once

#include "contour/LevelSet.h"
#include "plot2d/DrawSurface.h"
#include "triangulation/KeptTriangulation.h"
#include "util/AppError.h"
#include "util/RunState.h"

#include <atomic>
#include <functional>
#include <string>

namespace terravo {

struct ContourInput {
    const PointSet& points;
    KeptTriangulation& triangulation;
    bool showTriangles = false;
    bool showPerimeter = false;
    const std::atomic<bool>& stopRequested; // looked at between levels, or between filled triangles
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

/// Records the number of levels in the run state. Throws AppError 1001 for fewer than 2.
void RecordLevelCount(const LevelSet& levels, RunState& state);

/// The error that stands for a triangulation that failed.
AppError TriangulationError(Index ierr, const RunState& state);

/// Draws every triangle edge and every hull edge as asked for, in white, one pixel wide.
void DrawTriangleOverlay(DrawSurface& surface, const ContourInput& input,
                         const TriangleList& triangles);

/// Runs the body of a contour routine and catches whatever ends it.
/// @param report  may be null.
/// @return empty on success, else the description of the error.
std::string RunContourRoutine(ContourReport* report,
                              const std::function<void(ContourReport&)>& body);

} // namespace terravo
