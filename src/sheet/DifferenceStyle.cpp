#include "sheet/DifferenceStyle.h"

#include <algorithm>

namespace terravo {
namespace {

Index LevelCount(const SheetContext& context) {
    return context.source.levels.UpperBound();
}

Index BandAt(const SheetContext& context, double height) {
    Index band = 0;
    while (band < LevelCount(context) && context.source.levels[band + 1].value <= height) {
        ++band;
    }
    return band;
}

Extent HeightsOf(const SheetContext& context, Index band) {
    const LevelSet& levels = context.source.levels;
    const Extent& all = context.source.points.extentZ;
    return {band == 0 ? all.min : std::max(all.min, levels[band].value),
            band == LevelCount(context) ? all.max : std::min(all.max, levels[band + 1].value)};
}

// Of the bands on one side of zero: how many there are up to a band, counted from zero.
Index BandsFromZero(const SheetContext& context, int side, Index band) {
    Index count = 0;
    for (Index k = 0; k <= LevelCount(context); ++k) {
        const bool isWithin = side > 0 ? k <= band : k >= band;
        count += isWithin && ChangeOf(context, k) == side ? 1 : 0;
    }
    return count;
}

} // namespace

SheetTheme DifferenceTheme(SheetTheme theme) {
    theme.byHeight = false;
    theme.contour = theme.quietText;
    theme.index = theme.text;
    theme.contourWidth = 0.13;
    theme.indexWidth = 0.5;
    return theme;
}

int ChangeOf(const SheetContext& context, Index band) {
    const Extent heights = HeightsOf(context, band);
    return (heights.min >= 0 ? 1 : 0) - (heights.max <= 0 ? 1 : 0);
}

Colour ChangeBandColour(const SheetContext& context, Index band) {
    const int side = ChangeOf(context, band);
    if (side == 0) {
        return context.theme.ChangeColour(0);
    }
    constexpr double kPale = 0.15;
    constexpr double kOnly = 0.5; // of a single band
    const Index most =
        std::max(BandsFromZero(context, 1, LevelCount(context)), BandsFromZero(context, -1, 0));
    const auto step = static_cast<double>(BandsFromZero(context, side, band) - 1);
    const double part = most > 1 ? kPale + (1 - kPale) * step / (most - 1) : kOnly;
    return context.theme.ChangeColour(side * part);
}

Colour ChangeColourBetween(const SheetContext& context, double low, double high) {
    return low < 0 && high > 0 ? context.theme.ChangeColour(0)
                               : ChangeBandColour(context, BandAt(context, (low + high) / 2));
}

} // namespace terravo
