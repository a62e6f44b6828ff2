// Triangulating points in file order, with both start rules, against a well-known library.
//
// Data: plan positions in memory. Method: only the triangulation is timed: for ours with the making
// of the tables and of the insertion order, for the library with its sorting; the destruction of
// the result is left out for both. The number of triangles is reported, so that a run in which the
// two disagree is seen.
#include "BenchData.h"
#include "BenchRun.h"
#include "CpuStopwatch.h"
#include "triangulation/modDelaunay2D.h"

#ifdef TERRAVO_BENCH_PEER
#include "PeerDelaunay.h"
#endif

#include <numeric>

namespace terravo::bench {
namespace {

using modDelaunay2D::StartRule;

// Beyond this the walk from the triangle made last takes minutes in random order.
constexpr Index kMostForLastTriangle = 100000;
// A row-ordered grid of this size is run once.
constexpr Index kSlowGrid = 1000000;

void Ours(benchmark::State& state, Survey survey, Index count, StartRule start) {
    const Array1<PlanPoint> coord = PlanOf(KeptSurvey(survey, count));
    Index triangleCount = 0;
    for (auto _ : state) {
        CpuStopwatch watch;
        Array1<Index> order(count);
        std::iota(order.begin(), order.end(), 1);
        TriangleList triangles(count);
        const Index ierr = modDelaunay2D::Triangulate(coord, order, triangles, start);
        state.SetIterationTime(watch.Lap());
        triangleCount = triangles.count;
        if (ierr != modDelaunay2D::Ierr::kDone) {
            state.SkipWithError(modDelaunay2D::DescribeIerr(ierr).c_str());
            break;
        }
    }
    state.counters["triangles"] = triangleCount;
}

#ifdef TERRAVO_BENCH_PEER
void Peer(benchmark::State& state, Survey survey, Index count) {
    const Array1<PlanPoint> coord = PlanOf(KeptSurvey(survey, count));
    PeerRun run;
    for (auto _ : state) {
        run = TriangulateWithPeer(coord);
        state.SetIterationTime(run.seconds);
    }
    state.counters["triangles"] = static_cast<double>(run.triangles);
}
#endif

void Register(Survey survey, Index count) {
    const auto add = [&](const char* who, auto run) {
        const std::string name = BenchName("triangulate", Name(survey), who, std::to_string(count));
        return benchmark::RegisterBenchmark(name.c_str(), run)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    };
    auto* const nearby = add("nearby", [=](benchmark::State& state) {
        Ours(state, survey, count, StartRule::NearbyTriangle);
    });
    if (survey == Survey::Grid && count >= kSlowGrid) {
        nearby->Iterations(1)->Repetitions(1);
    }
    if (count <= kMostForLastTriangle) {
        add("last",
            [=](benchmark::State& state) { Ours(state, survey, count, StartRule::LastTriangle); });
    }
#ifdef TERRAVO_BENCH_PEER
    add("cgal", [=](benchmark::State& state) { Peer(state, survey, count); });
#endif
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    for (const auto survey : terravo::bench::kSurveys) {
        for (const auto count : terravo::bench::kSizes) {
            terravo::bench::Register(survey, count);
        }
    }
    return terravo::bench::RunBenchmarks(argc, argv);
}
