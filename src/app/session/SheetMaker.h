// Makes sheets of a survey, and keeps what several of them share.
//
// Data: the survey; the levels, contours and regions of the last rule. Method: contours are made
// anew when the survey or the rule has changed, not when the plan has.
#pragma once

#include "sheet/MakeSheet.h"
#include "survey/Survey.h"
#include "util/RunState.h"

#include <cstdint>
#include <optional>

namespace terravo {

class SheetMaker {
public:
    /// @param survey, run  looked at in each call; outlive the maker.
    SheetMaker(const Survey& survey, const RunState& run) : survey_(survey), run_(run) {}

    /// Makes a sheet.
    /// @param rule  of the levels.
    /// @return nothing when it was stopped.
    /// Throws AppError for a rule without levels.
    std::optional<SheetScene> Make(const SheetPlan& plan, const LevelRule& rule,
                                   const TextMeasure& measure, const StopToken& stop = StopToken());

    /// The levels of the last sheet.
    [[nodiscard]] const LevelSet& Levels() const { return levels_; }

private:
    bool PrepareContours(const LevelRule& rule, const StopToken& stop);
    void PrepareRegions();

    const Survey& survey_;
    const RunState& run_;
    std::optional<LevelRule> rule_; // of the contours; none: there are none
    std::uint64_t version_ = 0;     // of their survey
    LevelSet levels_;
    ContourSet contours_;
    Array1<LevelRegion> regions_; // empty until they are needed
};

/// The rule of a sheet for which nobody has chosen one: the first round interval proposed for the
/// heights, else the described count.
LevelRule RoundLevels(const Extent& heights);

} // namespace terravo
