// Triangulating points, in file order with both start rules and by the road that the programs take,
// against a well-known library.
//
// Data: plan positions in memory. Method: only the triangulation is timed, on the wall because the
// programs' road uses two threads: for ours with the making of the tables and of the insertion
// order, for the library with its sorting; the destruction of the result is left out for both. The
// number of triangles is reported, so that a run in which the two disagree is seen.
#include "BenchData.h"
#include "BenchRun.h"
#include "CpuStopwatch.h"
#include "triangulation/QuickRoad.h"
#include "util/Stopwatch.h"

#ifdef TERRAVO_BENCH_PEER
#include "PeerDelaunay.h"
#endif

#include <numeric>

namespace terravo::bench {
namespace {

using modDelaunay2D::StartRule;

// Beyond this the walk from the triangle made last takes minutes in random order.
constexpr Index kMostForLastTriangle = 100000;
// A row-ordered grid of this size is run once in file order.
constexpr Index kSlowGrid = 1000000;
// Beyond this only the road of the programs and the library are measured, once each.
constexpr Index kMostForFileOrder = 1000000;
constexpr Index kLargest = 10000000;

void Ours(benchmark::State& state, Layout layout, Index count, StartRule start) {
    const Array1<PlanPoint> coord = PlanOf(KeptSurvey(layout, count));
    Index triangleCount = 0;
    for (auto _ : state) {
        Stopwatch watch;
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

// The road of the programs. Its processor time is more than the time on the wall: it uses two
// threads for a part of the work.
void Quick(benchmark::State& state, Layout layout, Index count) {
    const Array1<PlanPoint> coord = PlanOf(KeptSurvey(layout, count));
    Index triangleCount = 0;
    double processorSeconds = 0;
    Road road{};
    for (auto _ : state) {
        Stopwatch watch;
        CpuStopwatch processor;
        TriangleList triangles(count);
        TriangulateQuickly(coord, triangles, {}, &road);
        processorSeconds += processor.Lap();
        state.SetIterationTime(watch.Lap());
        triangleCount = triangles.count;
    }
    state.counters["triangles"] = triangleCount;
    state.counters["along_curve"] = road == Road::AlongCurve ? 1 : 0;
    state.counters["processor_ms"] =
        benchmark::Counter(processorSeconds * 1e3, benchmark::Counter::kAvgIterations);
}

#ifdef TERRAVO_BENCH_PEER
void Peer(benchmark::State& state, Layout layout, Index count) {
    const Array1<PlanPoint> coord = PlanOf(KeptSurvey(layout, count));
    PeerRun run;
    for (auto _ : state) {
        run = TriangulateWithPeer(coord);
        state.SetIterationTime(run.seconds);
    }
    state.counters["triangles"] = static_cast<double>(run.triangles);
}
#endif

void Register(Layout layout, Index count) {
    const auto add = [&](const char* who, auto run) {
        const std::string name = BenchName("triangulate", Name(layout), who, std::to_string(count));
        return benchmark::RegisterBenchmark(name.c_str(), run)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    };
    const auto once = [&](benchmark::internal::Benchmark* benchmark, bool really) {
        if (really) {
            benchmark->Iterations(1)->Repetitions(1);
        }
    };
    once(add("quick", [=](benchmark::State& state) { Quick(state, layout, count); }),
         count == kLargest);
    if (count <= kMostForFileOrder) {
        once(add("nearby",
                 [=](benchmark::State& state) {
                     Ours(state, layout, count, StartRule::NearbyTriangle);
                 }),
             layout == Layout::Grid && count >= kSlowGrid);
    }
    if (count <= kMostForLastTriangle) {
        add("last",
            [=](benchmark::State& state) { Ours(state, layout, count, StartRule::LastTriangle); });
    }
#ifdef TERRAVO_BENCH_PEER
    once(add("cgal", [=](benchmark::State& state) { Peer(state, layout, count); }),
         count == kLargest);
#endif
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    for (const auto layout : terravo::bench::kLayouts) {
        for (const auto count : terravo::bench::kSizes) {
            terravo::bench::Register(layout, count);
        }
        terravo::bench::Register(layout, terravo::bench::kLargest);
    }
    return terravo::bench::RunBenchmarks(argc, argv);
}
