// Checking a survey, beside the triangulation that comes before it.
//
// Data: points in memory and their triangulation, made before the clock starts. Method: both are
// measured in one program, by the clock on the wall, since both use several threads.
#include "BenchData.h"
#include "BenchRun.h"
#include "survey/Survey.h"
#include "survey/check/SurveyCheck.h"
#include "triangulation/exact/ExactTriangulation.h"
#include "triangulation/modDelaunay2D.h"

#include <map>
#include <utility>

namespace terravo::bench {
namespace {

const Survey& SurveyOf(Layout layout, Index count) {
    static std::map<std::pair<Layout, Index>, Survey> kept;
    return kept.try_emplace({layout, count}, KeptSurvey(layout, count)).first->second;
}

void Check(benchmark::State& state, Layout layout, Index count) {
    const Survey& survey = SurveyOf(layout, count);
    const TriangulationOutcome& outcome = survey.Triangulation();
    std::size_t findings = 0;
    for (auto _ : state) {
        findings = CheckSurvey(survey.Points(), outcome, nullptr).size();
    }
    state.counters["findings"] = static_cast<double>(findings);
}

void Triangulate(benchmark::State& state, Layout layout, Index count) {
    const Array1<PlanPoint> coord = PlanOf(KeptSurvey(layout, count));
    for (auto _ : state) {
        TriangleList triangles;
        if (TriangulateExactly(coord, triangles) != modDelaunay2D::Ierr::kDone) {
            state.SkipWithError("no triangulation");
        }
        benchmark::DoNotOptimize(triangles.count);
    }
}

void Register(Layout layout, Index count) {
    const auto add = [&](const char* what, auto run) {
        const std::string name = BenchName("check", Name(layout), what, std::to_string(count));
        benchmark::RegisterBenchmark(name.c_str(), run)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    };
    add("check", [=](benchmark::State& state) { Check(state, layout, count); });
    add("triangulate", [=](benchmark::State& state) { Triangulate(state, layout, count); });
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    for (const auto layout : terravo::bench::kLayouts) {
        for (const auto count : terravo::bench::kSizes) {
            terravo::bench::Register(layout, count);
        }
    }
    return terravo::bench::RunBenchmarks(argc, argv);
}
