// Whether a ring crosses itself.
//
// Data: the vertices of a closed ring. Method: the sides are sorted by the left end of their
// extent; those whose extents meet are tried against each other by exact signs.
#pragma once

#include "triangulation/SpaceLine.h"

#include <optional>
#include <vector>

namespace terravo {

/// @param ring  vertices within reach of exact signs, none at the place of the one before.
/// @return a place where two sides cross, or where one lies on another; nothing where they only
///         touch at a vertex.
std::optional<PlanPoint> FindRingCrossing(const std::vector<SpacePoint>& ring);

} // namespace terravo
