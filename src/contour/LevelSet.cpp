#include "contour/LevelSet.h"

#include "util/AppError.h"
#include "util/NumberText.h"
#include "util/modUtilita.h"

#include <cmath>

namespace terravo {

LevelSet MakeLevelSet(const Extent& range, std::span<const Colour> palette,
                      const LevelRequest& request) {
    const Index n = request.levelCount;
    if (n < kFewestLevels) {
        throw AppError(ErrorNumber::kDrawing, "DrawContourMap",
                       "Two levels are needed at least: NLiv = " + std::to_string(n));
    }
    const double spacing = (range.max - range.min) / (n - 1);
    if (!std::isfinite(spacing)) {
        throw AppError(ErrorNumber::kOverflow, "DrawContourMap",
                       "The heights are too far apart to compute levels.");
    }
    LevelSet levels(n);
    for (Index k = 1; k <= n; ++k) {
        LevelRecord& level = levels[k];
        level.value = k == n ? range.max : range.min + (k - 1) * spacing;
        const double place = (k - 1) * 255.0 / (n - 1);
        level.colour = palette[static_cast<std::size_t>(modUtilita::RoundHalfEven(place))];
        level.labelColour = level.colour;
        if (request.showValues) {
            level.label = NumberText::FormatScreen(level.value, "#0.000", request.decimalSeparator);
        }
    }
    if (request.nudgeEnds) {
        levels[1].value += spacing * 1e-9;
        levels[n].value -= spacing * 1e-9;
    }
    return levels;
}

} // namespace terravo
