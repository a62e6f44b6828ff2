#include "app/batch/SmoothReport.h"

#include "app/batch/RunFailure.h"
#include "app/session/VectorMaker.h"
#include "contour/smoothing/SmoothCheck.h"

#include <algorithm>

namespace terravo {

void SmoothReport::Take(const LevelRule& rule, const SmoothingOptions& smoothing,
                        const StopToken& stop) {
    if (rule_ == rule) {
        return;
    }
    rule_ = rule;
    const SmoothSet& smooth = contours_.Smooth();
    if (!figures_) {
        figures_.emplace();
    }
    figures_->fraction = std::clamp(smoothing.fraction, kLeastFraction, kMostFraction);
    figures_->worst.height = std::max(figures_->worst.height, smooth.worst.height);
    figures_->worst.interval = std::max(figures_->worst.interval, smooth.worst.interval);
    figures_->vertices += smooth.vertices;
    if (call_.verify) {
        Verify(stop);
        figures_->verified = true;
    }
}

void SmoothReport::Verify(const StopToken& stop) const {
    const SmoothingSource source = contours_.SourceOfSmooth();
    const SmoothSet& smooth = contours_.Smooth();
    std::string fault = SmoothFaultOf(
        source, smooth, ToleranceOf(wish_, contours_.TheSurvey().ShownPoints()), stop);
    if (fault.empty() && wish_.fewerVertices) {
        fault = StraightFaultOf(
            source, StraightLinesOf(contours_, wish_), smooth.origin,
            {std::max(wish_.smoothing->limit, smooth.worst.height), wish_.smoothing->fraction},
            stop);
    }
    if (!fault.empty()) {
        throw RunFailure(ExitCode::kNumeric, pointFile_ + ": the smooth lines are wrong: " + fault);
    }
    EndWhenStopped();
}

} // namespace terravo
