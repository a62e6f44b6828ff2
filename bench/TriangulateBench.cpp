// Triangulating points: by exact signs, and by the routine that inserts in file order from the last
// triangle, against a well-known library.
//
// Data: plan positions in memory. Method: only the triangulation is timed, by the clock of the
// processor: for ours with the sorting and the making of the tables, for the library with its
// sorting; the destruction of the result is left out for both. The number of triangles is reported,
// so that a run in which the two disagree is seen.
#include "BenchData.h"
#include "BenchRun.h"
#include "CpuStopwatch.h"
#include "triangulation/exact/ExactTriangulation.h"
#include "triangulation/modDelaunay2D.h"

#ifdef TERRAVO_BENCH_PEER
#include "PeerDelaunay.h"
#endif

#include <chrono>
#include <numeric>

namespace terravo::bench {
namespace {

// Beyond this the walk from the triangle made last takes minutes in random order.
constexpr Index kMostForLastTriangle = 100000;
// Measured once, not seven times.
constexpr Index kLargest = 10000000;

template <class Triangulate>
void Ours(benchmark::State& state, Layout layout, Index count, Triangulate triangulate) {
    const Array1<PlanPoint> coord = PlanOf(KeptSurvey(layout, count));
    Index triangleCount = 0;
    std::chrono::duration<double, std::milli> elapsed{0};
    for (auto _ : state) {
        CpuStopwatch watch;
        const auto begin = std::chrono::steady_clock::now();
        TriangleList triangles;
        const Index ierr = triangulate(coord, triangles);
        elapsed += std::chrono::steady_clock::now() - begin;
        state.SetIterationTime(watch.Lap());
        triangleCount = triangles.count;
        if (ierr != modDelaunay2D::Ierr::kDone) {
            state.SkipWithError(modDelaunay2D::DescribeIerr(ierr).c_str());
            break;
        }
    }
    state.counters["triangles"] = triangleCount;
    state.counters["wall"] = elapsed.count() / static_cast<double>(state.iterations());
}

Index Exactly(const Array1<PlanPoint>& coord, TriangleList& triangles) {
    return TriangulateExactly(coord, triangles);
}

Index InFileOrder(const Array1<PlanPoint>& coord, TriangleList& triangles) {
    Array1<Index> order(coord.UpperBound());
    std::iota(order.begin(), order.end(), 1);
    triangles = TriangleList(coord.UpperBound());
    return modDelaunay2D::Triangulate(coord, order, triangles);
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
        benchmark::internal::Benchmark* added = benchmark::RegisterBenchmark(name.c_str(), run)
                                                    ->UseManualTime()
                                                    ->Unit(benchmark::kMillisecond);
        if (count == kLargest) {
            added->Iterations(1)->Repetitions(1);
        }
    };
    add("exact", [=](benchmark::State& state) { Ours(state, layout, count, Exactly); });
    // File order makes a turned grid a triangulation with a fault.
    if (count <= kMostForLastTriangle && layout != Layout::TurnedGrid) {
        add("last", [=](benchmark::State& state) { Ours(state, layout, count, InFileOrder); });
    }
#ifdef TERRAVO_BENCH_PEER
    add("cgal", [=](benchmark::State& state) { Peer(state, layout, count); });
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
