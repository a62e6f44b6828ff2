// Cutting a triangulated terrain by levels, beside the triangulation that comes before it.
//
// Data: random points on a smooth terrain and their triangulation, made before the clock starts.
// Method: a cutter is made and asked for every level, lowest first, as a drawing does; then the
// same levels are made into joined lines, and those into bands.
#include "BenchData.h"
#include "BenchRun.h"
#include "contour/ContourSet.h"
#include "contour/LevelBands.h"
#include "contour/LevelCut.h"
#include "contour/LevelRule.h"
#include "plot2d/ColourScale.h"
#include "survey/Survey.h"

#include <map>

namespace terravo::bench {
namespace {

const Survey& SurveyOf(Index count) {
    static std::map<Index, Survey> kept;
    return kept.try_emplace(count, KeptSurvey(Layout::Random, count)).first->second;
}

LevelSet LevelsOf(const PointSet& points, Index levelCount) {
    return MakeLevelSet(RuleByCount(levelCount), points.extentZ,
                        ColourScale::MakePalette(ColourScale::kPlanColours), LevelRequest());
}

void Cut(benchmark::State& state, Index count, Index levelCount) {
    const PointSet& points = SurveyOf(count).Points();
    const TriangleList& triangles = SurveyOf(count).Triangulation().triangles;
    const LevelSet levels = LevelsOf(points, levelCount);
    std::size_t pieces = 0;
    for (auto _ : state) {
        pieces = 0;
        LevelCutter cutter(points, triangles, levels);
        for (Index k = 1; k <= levelCount; ++k) {
            pieces += cutter.Cut(k).size();
        }
        benchmark::DoNotOptimize(pieces);
    }
    if (pieces == 0) {
        state.SkipWithError("no level cut a triangle");
    }
    state.counters["pieces"] = static_cast<double>(pieces);
}

void Join(benchmark::State& state, Index count, Index levelCount) {
    const PointSet& points = SurveyOf(count).Points();
    const TriangleList& triangles = SurveyOf(count).Triangulation().triangles;
    const LevelSet levels = LevelsOf(points, levelCount);
    std::size_t vertices = 0;
    std::size_t lines = 0;
    for (auto _ : state) {
        vertices = lines = 0;
        const std::optional<ContourSet> contours = MakeContourSet(points, triangles, levels);
        for (const ContourLevel& level : *contours) {
            vertices += level.vertices.size();
            lines += level.lines.size();
        }
    }
    if (lines == 0) {
        state.SkipWithError("no level has a line");
    }
    state.counters["lines"] = static_cast<double>(lines);
    state.counters["vertices"] = static_cast<double>(vertices);
}

void Fill(benchmark::State& state, Index count, Index levelCount) {
    const PointSet& points = SurveyOf(count).Points();
    const TriangleList& triangles = SurveyOf(count).Triangulation().triangles;
    const std::optional<ContourSet> contours =
        MakeContourSet(points, triangles, LevelsOf(points, levelCount));
    std::size_t polygons = 0;
    for (auto _ : state) {
        polygons = 0;
        for (const LevelBand& band : MakeLevelBands(points, triangles, *contours)) {
            polygons += band.polygons.size();
        }
    }
    if (polygons == 0) {
        state.SkipWithError("no band has ground");
    }
    state.counters["polygons"] = static_cast<double>(polygons);
}

void TriangulatePoints(benchmark::State& state, Index count) {
    const PointSet& points = KeptSurvey(Layout::Random, count);
    for (auto _ : state) {
        state.PauseTiming();
        const Survey survey(points);
        state.ResumeTiming();
        benchmark::DoNotOptimize(survey.Triangulation().triangles.count);
    }
}

void Register(Index count) {
    const std::string size = std::to_string(count);
    for (const Index levelCount : {10, 50}) {
        benchmark::RegisterBenchmark(BenchName("cut", std::to_string(levelCount), size).c_str(),
                                     Cut, count, levelCount)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(
            BenchName("cut", std::to_string(levelCount) + " joined", size).c_str(), Join, count,
            levelCount)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(
            BenchName("cut", std::to_string(levelCount) + " bands", size).c_str(), Fill, count,
            levelCount)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark(BenchName("cut", "triangulate", size).c_str(), TriangulatePoints,
                                 count)
        ->Unit(benchmark::kMillisecond);
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    for (const auto count : terravo::bench::kSizes) {
        terravo::bench::Register(count);
    }
    return terravo::bench::RunBenchmarks(argc, argv);
}
