// The colour tables of the levels and of the heights.
//
// Data: arrays of colours counted from 0. Method: ramps computed channel by channel; a few sizes
// are defined, every other size is black throughout.
#pragma once

#include "plot2d/Colour.h"

#include <vector>

namespace terravo::ColourScale {

inline constexpr int kPlanColours = 256;
inline constexpr int kViewColours = 1280;

/// The palette of `count` colours, entries 0..count-1.
/// Defined sizes: 2 (white, grey), 16 (the display colours), 256 (blue over green to red),
/// 1280 (magenta, blue, cyan, green, yellow, red), 1792 (the same between white and black).
/// @throws AppError for a count below 1.
std::vector<Colour> MakePalette(int count);

} // namespace terravo::ColourScale
