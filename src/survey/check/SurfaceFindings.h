// What is to be told of the lines that were laid over the points of a survey.
//
// Data: the remarks of the surface and the plan that its lines came from. Method: each remark
// becomes a finding with a sentence; a line is called by its name and by where it comes from.
#pragma once

#include "survey/check/Finding.h"
#include "survey/surface/ShapeSurface.h"

#include <string>
#include <vector>

namespace terravo {

/// @param points     in use; the findings name them by these numbers.
/// @param mostOfAKind  findings that stand for themselves.
std::vector<Finding> FindingsOf(const ShapedSurface& surface, const SurfacePlan& plan,
                                const PointSet& points, std::size_t mostOfAKind = 500);

/// Of these, the lines that are not in the surface, and breaklines that lie where it is hidden:
/// what must not be lost without a word.
std::vector<Finding> LostLines(const ShapedSurface& surface, const SurfacePlan& plan,
                               const PointSet& points);

/// "WALL (lines.txt, 12)": name, or number among its kind, and where it stands.
std::string LabelOf(const SurfacePlan& plan, LineRole role, std::size_t line);

} // namespace terravo
