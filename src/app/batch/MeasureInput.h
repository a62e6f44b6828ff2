// What is read beside the points so that they can be measured: a second survey, rings, lines.
//
// Data: the names of files. Method: what is not certain ends the run with a sentence that names the
// file; what was left out of a file is told.
#pragma once

#include "analysis/MeasuredPolygon.h"
#include "app/batch/BatchOptions.h"
#include "survey/Survey.h"

#include <memory>
#include <string>
#include <vector>

namespace terravo {

/// The survey to compare with, with its surface. The options that say how the point file is read
/// and what shapes its surface do not hold for it; a project says both itself.
/// @param[in,out] remarks  sentences.
/// Throws RunFailure.
std::shared_ptr<const Survey> ReadSecondSurvey(const BatchOptions& options,
                                               std::vector<std::string>& remarks,
                                               const StopToken& stop);

/// The rings of the files.
/// @param[in,out] remarks  sentences.
/// Throws RunFailure.
std::vector<PlanRing> ReadRings(const std::vector<std::string>& files,
                                std::vector<std::string>& remarks, const StopToken& stop);

struct SectionLine {
    std::string name; // may be empty
    std::string file; // likewise
    std::vector<PlanPoint> places;
};

/// The lines of the call; a closed one ends where it begins.
/// @param[in,out] remarks  sentences.
/// Throws RunFailure.
std::vector<SectionLine> ReadSections(const std::vector<SectionCall>& calls,
                                      std::vector<std::string>& remarks, const StopToken& stop);

} // namespace terravo
