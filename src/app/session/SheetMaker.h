// Makes sheets of a survey.
//
// Data: the survey's contours, the texts of the run. Method: contours are made anew when the survey
// or the rule has changed, not when the plan has.
#pragma once

#include "app/session/SurveyContours.h"
#include "sheet/MakeSheet.h"
#include "util/RunState.h"

#include <optional>

namespace terravo {

/// What a sheet says of its lines.
struct SheetLineFigures {
    double largestStep = 0; // between neighbouring levels, data units; of one level the range
    std::optional<SmoothError> smooth; // of smooth lines
};

class SheetMaker {
public:
    /// @param contours, run  looked at in each call; outlive the maker.
    SheetMaker(SurveyContours& contours, const RunState& run) : contours_(contours), run_(run) {}

    /// Makes a sheet.
    /// @param rule  of the levels.
    /// @return nothing when it was stopped.
    /// Throws AppError for a rule without levels.
    std::optional<SheetScene> Make(const SheetPlan& plan, const LevelRule& rule,
                                   const TextMeasure& measure, const StopToken& stop = StopToken());

    /// Makes the part of the sheet made last that an edit has changed.
    /// @param plan  of that sheet.
    /// @return nothing where no sheet has been made.
    [[nodiscard]] std::optional<SheetScene>
    MakePatch(const SheetPlan& plan, const SurfacePatch& patch, const TextMeasure& measure) const;

    /// Of the sheet made last.
    [[nodiscard]] SheetLineFigures Figures() const {
        return last_ ? last_->figures : SheetLineFigures();
    }

private:
    [[nodiscard]] const Array1<LevelRegion>* RegionsFor(const SheetPlan& plan,
                                                        const PointSet& points);

    // What the sheet made last was made with.
    struct Last {
        SheetLayout layout;
        LevelRule rule;
        LevelSet levels;
        SheetLineFigures figures;
    };

    SurveyContours& contours_;
    const RunState& run_;
    std::optional<Last> last_;
};

/// The rule of a sheet for which nobody has chosen one: the first round interval proposed for the
/// heights, else the described count.
LevelRule RoundLevels(const Extent& heights);

} // namespace terravo
