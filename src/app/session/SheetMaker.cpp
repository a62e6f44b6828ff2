#include "app/session/SheetMaker.h"

#include <algorithm>

namespace terravo {
namespace {

constexpr double kFinestOnPaper = 0.01; // millimetres, as of the lines on the edges of the bands

double LargestStep(const LevelSet& levels, const Extent& heights) {
    double step = levels.UpperBound() == 1 ? heights.max - heights.min : 0;
    for (Index k = 2; k <= levels.UpperBound(); ++k) {
        step = std::max(step, levels[k].value - levels[k - 1].value);
    }
    return step;
}

} // namespace

std::optional<SheetScene> SheetMaker::Make(const SheetPlan& plan, const LevelRule& rule,
                                           const TextMeasure& measure, const StopToken& stop) {
    if (!contours_.Prepare(rule, stop) ||
        (plan.smoothing && !contours_.PrepareSmooth(*plan.smoothing, stop))) {
        return std::nullopt;
    }
    const ShownSurface made = contours_.TheSurvey().Surface();
    const SheetSource source{made.points,
                             made.SurveyedPoints(),
                             made.triangles,
                             rule,
                             contours_.Levels(),
                             contours_.Contours(),
                             run_.texts,
                             measure,
                             RegionsFor(plan, made.points),
                             run_.decimalSeparator,
                             made.shaped,
                             plan.smoothing ? &contours_.Smooth() : nullptr};
    SheetScene scene = MakeSheet(plan, source, stop);
    last_ = Last{LayOut(plan, made.points), rule, contours_.Levels(), {}};
    last_->figures.largestStep = LargestStep(contours_.Levels(), made.points.extentZ);
    if (plan.smoothing) {
        last_->figures.smooth = contours_.Smooth().worst;
    }
    return stop.IsStopRequested() ? std::nullopt : std::optional(std::move(scene));
}

// The bands end at the lines as they are drawn.
const Array1<LevelRegion>* SheetMaker::RegionsFor(const SheetPlan& plan, const PointSet& points) {
    if (!plan.Shows(SheetLayer::Bands)) {
        return nullptr;
    }
    return plan.smoothing
               ? &contours_.SmoothRegions(kFinestOnPaper * LayOut(plan, points).scale / 1000)
               : &contours_.Regions();
}

std::optional<SheetScene> SheetMaker::MakePatch(const SheetPlan& plan, const SurfacePatch& patch,
                                                const TextMeasure& measure) const {
    if (!last_) {
        return std::nullopt;
    }
    const std::optional<ContourSet> contours =
        MakeContourSet(patch.points, patch.triangles, last_->levels);
    Array1<LevelRegion> regions;
    if (plan.Shows(SheetLayer::Bands)) {
        regions = MakeSurfaceRegions(patch.points, patch.triangles, *contours);
    }
    const SheetSource source{
        patch.points,         patch.surveyed, patch.triangles,
        last_->rule,          last_->levels,  *contours,
        run_.texts,           measure,        plan.Shows(SheetLayer::Bands) ? &regions : nullptr,
        run_.decimalSeparator};
    return MakeSheetPatch(plan, source, last_->layout, patch);
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
