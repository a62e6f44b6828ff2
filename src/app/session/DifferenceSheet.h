// The sheet of how much the ground has changed from one survey to another.
//
// Data: the difference surface, whose heights are the second survey less the first. Method: it is
// contoured as any surface is, with straight lines, at multiples of a round interval and always at
// zero. Ground that has not changed at all lies between two levels next to zero, so that it is
// neither cut nor fill and has both borders drawn.
#pragma once

#include "analysis/DifferenceSurface.h"
#include "analysis/Volumes.h"
#include "contour/LevelRule.h"
#include "sheet/SheetPlan.h"
#include "sheet/SheetWords.h"

#include <optional>
#include <string>

namespace terravo {

/// What the sheet shows. The surface outlives the call.
struct DifferenceSource {
    const DifferenceSurface& difference;
    std::string firstName{}; // of the surveys
    std::string secondName{};
    std::optional<VolumeFigures> volumes{}; // for the legend
    std::optional<LevelRule> rule{};        // of the levels; none: DifferenceLevels
};

/// A plan for the survey's own sheet as one for a difference: with bands, every line with its
/// value, straight lines, no points, and a title of its own.
SheetPlan DifferencePlan(SheetPlan plan);

/// Multiples of a round interval; by count, and without any, where nothing differs from anything.
LevelRule DifferenceLevels(const Extent& heights);

/// @param plan  layers that a difference has not (points and their texts, breaklines) are left out
///              and its lines are straight, whatever it says.
/// @return nothing where the surveys have no ground in common, or when it was stopped.
std::optional<SheetScene> MakeDifferenceSheet(SheetPlan plan, const DifferenceSource& source,
                                              const SheetWords& words,
                                              const StopToken& stop = StopToken());

} // namespace terravo
