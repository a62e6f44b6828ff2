#include "app/session/SheetMaker.h"

namespace terravo {

std::optional<SheetScene> SheetMaker::Make(const SheetPlan& plan, const LevelRule& rule,
                                           const TextMeasure& measure, const StopToken& stop) {
    if (!contours_.Prepare(rule, stop)) {
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
                             plan.Shows(SheetLayer::Bands) ? &contours_.Regions() : nullptr,
                             run_.decimalSeparator,
                             made.shaped};
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
