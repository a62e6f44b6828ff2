// What edge is met first to the left of a place.
//
// Data: edges that do not cross and the places asked for. Method: a line sweeps over the places
// from bottom to top; the edges that it meets are kept in the order in which it meets them, a chain
// of edges that goes on upwards as one entry. The order is decided by exact signs. Edges that cross
// after all, by the last digit, stand in one order or the other.
#pragma once

#include "contour/GroundEdges.h"
#include "triangulation/exact/ExactSigns.h"

#include <span>
#include <vector>

namespace terravo {

/// For each place the edge to its left, 0 where there is none.
/// @param asked  place numbers, increasing.
std::vector<Index> EdgesToTheLeft(const GroundEdges& edges, const ExactSigns& signs,
                                  std::span<const Index> asked);

} // namespace terravo
