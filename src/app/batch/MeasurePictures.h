// Sections and differences of a run as sheets.
//
// Data: what was measured, the options of the sheet. Method: those hold here as far as they mean
// something. Several sheets are pages of a PDF, or files with a number before the extension.
#pragma once

#include "app/batch/MeasureRun.h"
#include "util/RunState.h"

#include <string>
#include <vector>

namespace terravo {

/// Where pictures go, and what they are written with.
struct PictureRun {
    const BatchOptions& options;
    const RunState& run;
    OutputGroup& group;
    const StopToken& stop;
};

/// Draws the sections, each on a sheet of its own, then the cross-sections on as many as they need.
/// @param names  of the surveys.
/// @return the files. Throws RunFailure, AppError.
std::vector<std::string> DrawSections(const PictureRun& to, const MeasureFigures& figures,
                                      const std::string& firstName, const std::string& secondName);

/// Draws the difference of two surveys that have ground in common.
/// @param volumes  for the legend.
/// Throws RunFailure, AppError.
void DrawDifference(const PictureRun& to, const DifferenceSurface& difference,
                    const VolumeFigures& volumes, const std::string& firstName,
                    const std::string& secondName);

} // namespace terravo
