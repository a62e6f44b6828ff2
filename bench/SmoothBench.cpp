// Making contours smooth, on one thread.
//
// Data: random points on a smooth terrain, their triangulation, levels by count. Method: the whole
// way from points and triangles to curves, the tracing included, with either goal; then the curves
// made straight as for a plot at a hundredth of the mean spacing of the points, and their
// examination. The time a vertex is that of a vertex of the contours before they are made straight.
#include "BenchData.h"
#include "BenchRun.h"
#include "contour/LevelRule.h"
#include "contour/smoothing/FlattenContours.h"
#include "contour/smoothing/SmoothCheck.h"
#include "contour/smoothing/SmoothRun.h"
#include "plot2d/ColourScale.h"
#include "survey/Survey.h"

#include <map>

namespace terravo::bench {
namespace {

constexpr Index kLevels = 50;

struct Subject {
    Survey survey;
    LevelSet levels;
    double tolerance = 0;

    explicit Subject(Index count) : survey(KeptSurvey(Layout::Random, count)) {
        const PointSet& points = survey.Points();
        levels = MakeLevelSet(RuleByCount(kLevels), points.extentZ,
                              ColourScale::MakePalette(ColourScale::kPlanColours), LevelRequest());
        const double width = points.extentX.max - points.extentX.min;
        tolerance = 0.01 * width / std::sqrt(count);
        survey.Triangulation();
    }
    [[nodiscard]] SmoothingSource Source() const {
        return {survey.Points(), survey.Triangulation().triangles, nullptr, levels};
    }
};

const Subject& SubjectOf(Index count) {
    static std::map<Index, Subject> kept;
    return kept.try_emplace(count, count).first->second;
}

SmoothSet Smooth(const Subject& subject, SmoothingGoal goal) {
    SmoothingOptions options;
    options.goal = goal;
    options.smoothness = goal == SmoothingGoal::Plain ? 0.5 : 0.4;
    return *smoothing::SmoothWithAnyFraction(subject.Source(), options,
                                             [](int count, const std::function<void(int)>& work) {
                                                 for (int piece = 0; piece < count; ++piece) {
                                                     work(piece);
                                                 }
                                             });
}

void CountVertices(benchmark::State& state, std::size_t vertices) {
    state.counters["vertices"] = static_cast<double>(vertices);
    state.counters["a_vertex"] = benchmark::Counter(static_cast<double>(vertices),
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

void Make(benchmark::State& state, Index count, SmoothingGoal goal) {
    const Subject& subject = SubjectOf(count);
    std::size_t vertices = 0;
    for (auto _ : state) {
        vertices = Smooth(subject, goal).vertices;
    }
    CountVertices(state, vertices);
}

void Flatten(benchmark::State& state, Index count) {
    const Subject& subject = SubjectOf(count);
    const SmoothSet smooth = Smooth(subject, SmoothingGoal::Plain);
    for (auto _ : state) {
        benchmark::DoNotOptimize(FlattenContours(smooth, subject.tolerance));
    }
    CountVertices(state, smooth.vertices);
}

void Examine(benchmark::State& state, Index count) {
    const Subject& subject = SubjectOf(count);
    const SmoothSet smooth = Smooth(subject, SmoothingGoal::Plain);
    for (auto _ : state) {
        if (!SmoothFaultOf(subject.Source(), smooth, subject.tolerance).empty()) {
            state.SkipWithError("the lines have a fault");
        }
    }
    CountVertices(state, smooth.vertices);
}

void Register(Index count) {
    const std::string size = std::to_string(count);
    const auto add = [&](const char* what, auto run) {
        benchmark::RegisterBenchmark(BenchName("smooth", what, size).c_str(), run)
            ->Unit(benchmark::kMillisecond);
    };
    add("plain", [=](benchmark::State& state) { Make(state, count, SmoothingGoal::Plain); });
    add("surface", [=](benchmark::State& state) { Make(state, count, SmoothingGoal::Surface); });
    add("flatten", [=](benchmark::State& state) { Flatten(state, count); });
    add("examine", [=](benchmark::State& state) { Examine(state, count); });
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    for (const auto count : terravo::bench::kSizes) {
        terravo::bench::Register(count);
    }
    return terravo::bench::RunBenchmarks(argc, argv);
}
