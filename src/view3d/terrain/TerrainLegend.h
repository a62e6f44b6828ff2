// The numbers beside the colours of a terrain.
//
// Data: heights from the lowest to the highest. Method: as many digits as tell neighbours apart.
// Heights that are huge or tiny have exponents, all the same one; where the differences are tiny
// beside the heights, what they have in common stands apart.
#pragma once

#include <string>
#include <vector>

namespace terravo {

struct TerrainLegendTexts {
    std::string base;                // to be added to every value; empty: nothing
    std::vector<std::string> values; // from the lowest, at equal steps; one where all are the same
};

/// @param steps  between the values, 1 at least.
TerrainLegendTexts MakeTerrainLegend(double lowest, double highest, int steps,
                                     char decimalSeparator);

} // namespace terravo
