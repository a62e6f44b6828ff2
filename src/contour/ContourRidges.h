// Ridges exactly at a level, which its lines pass both ways.
//
// Data: the lines of one level. Method: a segment that is passed in both directions is taken out
// of both lines, and their ends are joined again in the two points, so that higher ground stays on
// the left: a spur falls off, two plateaus that a ridge connects get a line each, the two lines
// of a crater's rim become one wherever the rim is higher. The segments are then handed out once,
// as ridges from fork to fork, or closed when there is no fork.
#pragma once

#include "contour/ContourLineBuilder.h"

namespace terravo {

/// Takes the ridges out of the lines of a finished level and adds them behind. Only segments
/// with an end near a point are looked at: nowhere else do the two sides of a ridge meet.
void TakeRidgesApart(ContourLineBuilder& lines);

} // namespace terravo
