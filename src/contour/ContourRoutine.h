// What the contour routines share: what they work on, how they end, and what comes on top.
#pragma once

#include "contour/LevelSet.h"
#include "plot2d/DrawSurface.h"
#include "survey/Survey.h"
#include "util/AppError.h"
#include "util/RunState.h"
#include "util/StopToken.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace terravo {

struct ContourInput {
    const Survey& survey;
    const RunState& run; // texts of errors
    bool showTriangles = false;
    bool showPerimeter = false;
    const StopToken& stop;              // looked at between levels, or between filled triangles
    Index fewestLevels = kFewestLevels; // fewer are refused
    /// Areas: of the surface below the first level; none: that of the last level.
    std::optional<Colour> colourBelow = std::nullopt;
};

/// How one contour drawing ended, and the seconds spent in its parts.
struct ContourReport {
    std::string error;    // description of what ended it; empty on success
    int errorNumber = 0;  // of the AppError, see ErrorNumber
    bool stopped = false; // ended at the wish to stop: the picture is not complete
    Index levelCount = 0; // levels that were asked for
    std::int64_t segments = 0;
    double triangulate = 0;
    double cut = 0;
    double draw = 0;
    double write = 0;
};

/// What the user is told of a triangulation that failed, behind its code.
const std::string& TriangulationAdvice(Index ierr, const RunState& run);

/// The error that stands for a triangulation that failed.
AppError TriangulationError(Index ierr, const RunState& run);

/// Draws every triangle edge and every hull edge as asked for, in white, one pixel wide.
void DrawTriangleOverlay(DrawSurface& surface, const ContourInput& input,
                         const ShownSurface& shown);

/// Runs a contour routine: refuses too few levels with error 1001, gets the surface,
/// hands it to the body unless the work was stopped, and catches whatever ends it.
ContourReport
RunContourRoutine(const LevelSet& levels, const ContourInput& input,
                  const std::function<void(const ShownSurface&, ContourReport&)>& body);

} // namespace terravo
