// The making of smooth contours with everything free to be set: for MakeSmoothContours and for
// tests.
//
// Data: as there. Method: the steps that can be done apart, points or levels, are handed to a
// runner, so that a test can have them in any order.
#pragma once

#include "contour/smoothing/SmoothContours.h"

#include <functional>

namespace terravo::smoothing {

/// Calls a piece of work for 0 .. count - 1, each once, and waits for all.
using PieceRunner = std::function<void(int count, const std::function<void(int piece)>& work)>;

/// As MakeSmoothContours, but takes the fraction as it is: lines of 0.5 and more may cross.
std::optional<SmoothSet> SmoothWithAnyFraction(const SmoothingSource& source,
                                               const SmoothingOptions& options,
                                               const PieceRunner& inPieces,
                                               const StopToken& stop = StopToken());

} // namespace terravo::smoothing
