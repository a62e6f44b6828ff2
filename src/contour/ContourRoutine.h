// What the contour routines share: what they work on, how they end, and what comes on top.
#pragma once

#include "contour/LevelSet.h"
#include "plot2d/DrawSurface.h"
#include "survey/KeptTriangulation.h"
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
    int errorNumber = 0;  // of the AppError that ended it, see ErrorNumber
    bool stopped = false; // ended at the stop request: the picture is not complete
};

/// The error that stands for a triangulation that failed.
AppError TriangulationError(Index ierr, const RunState& state);

/// Draws every triangle edge and every hull edge as asked for, in white, one pixel wide.
void DrawTriangleOverlay(DrawSurface& surface, const ContourInput& input,
                         const TriangleList& triangles);

/// Runs a contour routine: records the number of levels in the run state, refuses fewer than 2 with
/// error 1001, gets the triangulation, hands it to the body unless the work was stopped, and
/// catches whatever ends it.
/// @param report  may be null.
/// @return empty on success, else the description of the error.
std::string RunContourRoutine(
    const LevelSet& levels, const ContourInput& input, RunState& state, ContourReport* report,
    const std::function<void(const KeptTriangulation::Result&, ContourReport&)>& body);

} // namespace terravo
