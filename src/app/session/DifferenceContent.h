// The difference of two surveys for other programs.
//
// Data: the difference surface, what the user wants. Method: its contours lie at round heights, 0
// among them where ground was both added and taken away: the border of cut and fill.
#pragma once

#include "analysis/DifferenceSurface.h"
#include "export/vector/MakeVectorContent.h"

#include <optional>
#include <string>

namespace terravo {

/// Whether a difference has contours: not where it is the same everywhere.
bool HasLevels(const Extent& heights);

/// @param name  of the surface, in the files.
/// @param wish  its smoothing is not looked at: lines are as they are cut.
/// @param stop  stage "contour".
/// @return nothing when it was stopped.
std::optional<VectorContent> MakeDifferenceContent(const DifferenceSurface& difference,
                                                   const std::string& name, VectorWish wish,
                                                   const StopToken& stop = StopToken());

} // namespace terravo
