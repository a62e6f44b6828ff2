// What a run tells of its smooth lines.
//
// Data: the smooth lines that the sheet and the files show. Method: each are looked at when they
// have been made; where sheet and files have the same levels, once.
#pragma once

#include "app/batch/SmoothOptions.h"
#include "app/session/SurveyContours.h"

#include <optional>
#include <string>

namespace terravo {

/// The smooth lines of a run, on the sheet and in files. Where those have other levels, both.
struct SmoothFigures {
    double fraction = 0;
    SmoothError worst;
    std::size_t vertices = 0;
    bool verified = false;
};

class SmoothReport {
public:
    /// @param call      and the others outlive this.
    /// @param wish      how they are made straight.
    /// @param contours  looked at in each call.
    SmoothReport(const std::string& pointFile, const SmoothCall& call, const VectorWish& wish,
                 const SurveyContours& contours)
        : pointFile_(pointFile), call_(call), wish_(wish), contours_(contours) {}

    /// Takes the lines that the contours have by now, and verifies them where the call asks for it.
    /// Throws RunFailure when they are wrong.
    void Take(const LevelRule& rule, const SmoothingOptions& smoothing, const StopToken& stop);

    /// Of all that was taken; nothing when there was none.
    [[nodiscard]] const std::optional<SmoothFigures>& Figures() const { return figures_; }

private:
    void Verify(const StopToken& stop) const;

    const std::string& pointFile_;
    const SmoothCall& call_;
    const VectorWish& wish_;
    const SurveyContours& contours_;
    std::optional<LevelRule> rule_; // of the lines taken last
    std::optional<SmoothFigures> figures_;
};

} // namespace terravo
