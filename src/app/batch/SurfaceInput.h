// From the options that shape the surface to a plan over the points.
//
// Data: the options and the points that were read. Method: files are read, codes and names are
// looked for; what cannot be found or read ends the run with a sentence, what was left out of a
// file is told.
#pragma once

#include "app/batch/SurfaceOptions.h"
#include "survey/Survey.h"

#include <string>
#include <vector>

namespace terravo {

/// What a summary tells of the surface.
struct SurfaceSummary {
    SurfaceFigures figures;
    std::optional<double> longestSide;
    bool verified = false;
    std::vector<std::string> remarks; // sentences
};

/// Lays what the call asks for over the points.
/// @param[in,out] survey  with its points; gets the plan.
/// @param[out] remarks    sentences on what was left out of the files.
/// Throws RunFailure.
void ApplySurfaceCall(const SurfaceCall& call, const std::string& pointFile, Survey& survey,
                      std::vector<std::string>& remarks, const StopToken& stop);

/// Tells of lines that the surface does not have, or does not show.
/// @param[in,out] remarks  get a sentence on each, up to a number.
void TellOfLostLines(const Survey& survey, std::vector<std::string>& remarks);

/// What came of it; nothing where no option shaped the surface.
/// Throws RunFailure where the surface shows nothing, or is found wrong by the check that was asked
/// for.
std::optional<SurfaceSummary> SummariseSurface(const SurfaceCall& call,
                                               const std::string& pointFile, const Survey& survey);

} // namespace terravo
