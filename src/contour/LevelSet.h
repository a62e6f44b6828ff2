// The levels at which a surface is cut, and how each is drawn.
//
// Data: a 1-based array of records in increasing level order. Method: plain values; a LevelRule
// says which heights they have.
#pragma once

#include "plot2d/Colour.h"
#include "util/Array1.h"

#include <cstdint>
#include <string>

namespace terravo {

struct LevelRecord {
    double value = 0; // height, data units
    Colour colour = 0;
    std::int32_t width = 1; // line width in pixels; raised to 1 when drawn
    std::string label;      // empty: no label
    Colour labelColour = 0;
    std::int32_t labelSize = 10; // points; raised to 8 when labels are drawn
};

using LevelSet = Array1<LevelRecord>;

/// Fewest and most levels that a user may ask for.
inline constexpr Index kFewestLevels = 2;
inline constexpr Index kMostLevels = 100000;

struct LevelRequest {
    bool showValues = false;
    char decimalSeparator = '.'; // of the labels
    /// Lines by count only: moves the first and the last level inwards by a billionth of the
    /// spacing, so that the lowest and the highest point do not lie exactly on a level.
    bool nudgeEnds = true;
};

} // namespace terravo
