#include "contour/smoothing/SmoothContours.h"

#include "contour/smoothing/LevelSmoother.h"
#include "contour/smoothing/SmoothRun.h"
#include "util/Parallel.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace terravo {
namespace smoothing {
namespace {

// Tells how many pieces are done, from the caller's thread alone.
class Progress {
public:
    Progress(const StopToken& stop, Index count) : stop_(stop), count_(count) {}

    [[nodiscard]] bool GoesOn() const { return !stop_.IsStopRequested(); }
    void Count() {
        const int done = ++done_;
        if (std::this_thread::get_id() == caller_) {
            static_cast<void>(stop_.GoesOn("smooth", static_cast<double>(done) / count_));
        }
    }

private:
    const StopToken& stop_;
    Index count_;
    std::atomic<int> done_{0};
    std::thread::id caller_ = std::this_thread::get_id();
};

// Adds up what the levels have.
void Summarise(const std::vector<SmoothError>& errors, SmoothSet& smooth) {
    for (const SmoothError& error : errors) {
        smooth.worst = Larger(smooth.worst, error);
    }
    for (const SmoothLevel& level : smooth.levels) {
        for (const SmoothLine& line : level.lines) {
            smooth.vertices += line.pieces + (line.closed ? 0 : 1);
        }
    }
}

} // namespace

std::optional<SmoothSet> SmoothWithAnyFraction(const SmoothingSource& source,
                                               const SmoothingOptions& options,
                                               const PieceRunner& inPieces, const StopToken& stop) {
    const std::optional<ContourSet> contours =
        MakeContourSet(source.points, source.triangles, source.levels, stop, Repeats::Keep);
    if (!contours) {
        return std::nullopt;
    }
    std::optional<PointGradients> gradients;
    if (options.goal == SmoothingGoal::Surface) {
        gradients.emplace(source, *contours, inPieces);
    }
    SmoothSet smooth;
    smooth.origin = LocalOrigin(source.points);
    const Index count = source.levels.UpperBound();
    smooth.levels = Array1<SmoothLevel>(count);
    const Array1<LevelSpacing> spacings = SpacingsOf(source.levels, source.points.extentZ);
    const SliderMaker sliders(source, options, smooth.origin);
    std::vector<SmoothError> errors(static_cast<std::size_t>(count));
    Progress progress(stop, count);
    inPieces(count, [&](int piece) {
        const Index k = piece + 1;
        smooth.levels[k].value = source.levels[k].value;
        if (progress.GoesOn() && !spacings[k].isRepeated) {
            LevelSmoother level(sliders, gradients ? &*gradients : nullptr, options.smoothness);
            errors[static_cast<std::size_t>(piece)] =
                level.Make((*contours)[k], spacings[k], smooth.levels[k]);
        }
        progress.Count();
    });
    if (stop.IsStopRequested()) {
        return std::nullopt;
    }
    Summarise(errors, smooth);
    return smooth;
}

} // namespace smoothing

std::optional<SmoothSet> MakeSmoothContours(const SmoothingSource& source,
                                            const SmoothingOptions& options,
                                            const StopToken& stop) {
    SmoothingOptions allowed = options;
    allowed.fraction = std::clamp(options.fraction, kLeastFraction, kMostFraction);
    return smoothing::SmoothWithAnyFraction(source, allowed, InParallel, stop);
}

} // namespace terravo
