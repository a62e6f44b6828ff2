#include "contour/smoothing/LevelSpacing.h"

#include <algorithm>
#include <set>
#include <vector>

namespace terravo::smoothing {
namespace {

constexpr double kClose = 1e-6; // of the range of heights

LevelSpacing SpacingAt(const std::vector<double>& values, double value, double range) {
    const auto here = std::lower_bound(values.begin(), values.end(), value);
    const bool hasBelow = here != values.begin();
    const bool hasAbove = here + 1 != values.end();
    const double below = hasBelow ? value - *(here - 1) : range;
    const double above = hasAbove ? *(here + 1) - value : range;
    LevelSpacing spacing;
    spacing.below = hasBelow || !hasAbove ? below : above;
    spacing.above = hasAbove || !hasBelow ? above : below;
    spacing.isClose = std::min(spacing.below, spacing.above) < kClose * range;
    return spacing;
}

} // namespace

Array1<LevelSpacing> SpacingsOf(const LevelSet& levels, const Extent& range) {
    std::vector<double> values;
    for (const LevelRecord& level : levels) {
        values.push_back(level.value);
    }
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    Array1<LevelSpacing> spacings;
    std::set<double> met;
    for (const LevelRecord& level : levels) {
        spacings.Append(SpacingAt(values, level.value, range.max - range.min));
        spacings[spacings.UpperBound()].isRepeated = !met.insert(level.value).second;
    }
    return spacings;
}

} // namespace terravo::smoothing
