#include "app/session/SheetMaker.h"

#include "plot2d/ColourScale.h"

#include <limits>
#include <utility>

namespace terravo {

bool SheetMaker::PrepareContours(const LevelRule& rule, const StopToken& stop) {
    if (rule_ == rule && version_ == survey_.Version()) {
        return true;
    }
    rule_.reset();
    regions_.Clear();
    const PointSet& points = survey_.Points();
    const TriangulationOutcome& made = survey_.Triangulation(stop);
    levels_ =
        MakeLevelSet(rule, points.extentZ, ColourScale::MakePalette(ColourScale::kPlanColours), {});
    std::optional<ContourSet> contours = MakeContourSet(points, made.triangles, levels_, stop);
    if (!contours || stop.IsStopRequested()) {
        return false;
    }
    contours_ = std::move(*contours);
    rule_ = rule;
    version_ = survey_.Version();
    return true;
}

// A level below everything comes first: above it is the whole surface.
void SheetMaker::PrepareRegions() {
    if (regions_.UpperBound() > 0) {
        return;
    }
    const PointSet& points = survey_.Points();
    const TriangleList& triangles = survey_.Triangulation().triangles;
    ContourSet below(1);
    below[1].value = std::numeric_limits<double>::lowest();
    regions_ = MakeLevelRegions(points, triangles, below);
    for (LevelRegion& region : MakeLevelRegions(points, triangles, contours_)) {
        regions_.Append(std::move(region));
    }
}

std::optional<SheetScene> SheetMaker::Make(const SheetPlan& plan, const LevelRule& rule,
                                           const TextMeasure& measure, const StopToken& stop) {
    if (!PrepareContours(rule, stop)) {
        return std::nullopt;
    }
    if (plan.Shows(SheetLayer::Bands)) {
        PrepareRegions();
    }
    const SheetSource source{survey_.Points(),
                             survey_.Triangulation().triangles,
                             rule,
                             levels_,
                             contours_,
                             run_.texts,
                             measure,
                             plan.Shows(SheetLayer::Bands) ? &regions_ : nullptr,
                             run_.decimalSeparator};
    SheetScene scene = MakeSheet(plan, source, stop);
    return stop.IsStopRequested() ? std::nullopt : std::optional(std::move(scene));
}

LevelRule RoundLevels(const Extent& heights) {
    LevelRule rule;
    const std::vector<double> intervals = ProposedIntervals(heights);
    if (!intervals.empty()) {
        rule.kind = LevelRuleKind::ByInterval;
        rule.interval = intervals.front();
    }
    return rule;
}

} // namespace terravo
