// What is measured of surfaces: areas, volumes, differences, profiles.
//
// Data: scattered points at a density that stays the same, and the same turned half about, so that
// no triangle meets its like. Method: from the finished triangulations on, by the clock on the
// wall; the triangulation of one of the two is timed beside, and the number of faces is reported.
#include "BenchData.h"
#include "BenchRun.h"
#include "analysis/AreaFigures.h"
#include "analysis/DifferenceSurface.h"
#include "analysis/Profile.h"
#include "analysis/SurfaceOverlay.h"
#include "analysis/Volumes.h"
#include "triangulation/TriangulatePoints.h"

#include <atomic>
#include <map>
#include <memory>

namespace terravo::bench {
namespace {

struct Pair {
    PointSet points;
    MeasuredSurface first;
    MeasuredSurface second;
};

PointSet TurnedAbout(const PointSet& points) {
    PointSet turned;
    for (Index i = 1; i <= points.count; ++i) {
        turned.Append(points.extentX.min + (points.extentX.max - points.x[i]),
                      points.extentY.min + (points.extentY.max - points.y[i]), points.z[i]);
    }
    return turned;
}

const Pair& KeptPair(Index count) {
    static std::map<Index, std::unique_ptr<Pair>> kept;
    std::unique_ptr<Pair>& pair = kept[count];
    if (!pair) {
        const PointSet& points = KeptSurvey(Layout::Random, count);
        const PointSet other = TurnedAbout(points);
        const PlanPoint origin = LocalOrigin(points.extentX, points.extentY);
        pair = std::make_unique<Pair>(
            Pair{points, MeasureFrom(origin, points, TriangulatePoints(PlanOf(points)).triangles),
                 MeasureFrom(origin, other, TriangulatePoints(PlanOf(other)).triangles)});
    }
    return *pair;
}

void Triangulate(benchmark::State& state, Index count) {
    const Array1<PlanPoint> coord = PlanOf(KeptPair(count).points);
    for (auto _ : state) {
        benchmark::DoNotOptimize(TriangulatePoints(coord));
    }
}

void Areas(benchmark::State& state, Index count) {
    const Pair& pair = KeptPair(count);
    for (auto _ : state) {
        benchmark::DoNotOptimize(MeasureAreas(pair.first));
    }
}

void Between(benchmark::State& state, Index count) {
    const Pair& pair = KeptPair(count);
    for (auto _ : state) {
        benchmark::DoNotOptimize(VolumeBetween(pair.first, pair.second));
    }
    std::atomic<std::int64_t> faces{0};
    OverlaySurfaces(pair.first, pair.second, [&](int, const OverlayFace&) { ++faces; });
    state.counters["faces"] = static_cast<double>(faces);
}

void Difference(benchmark::State& state, Index count) {
    const Pair& pair = KeptPair(count);
    for (auto _ : state) {
        benchmark::DoNotOptimize(MakeDifference(pair.first, pair.second));
    }
}

// A diagonal from corner to corner.
void Section(benchmark::State& state, Index count) {
    const Pair& pair = KeptPair(count);
    const SectionCutter cutter(pair.first);
    const std::array line{PlanPoint{pair.points.extentX.min, pair.points.extentY.min},
                          PlanPoint{pair.points.extentX.max, pair.points.extentY.max}};
    for (auto _ : state) {
        benchmark::DoNotOptimize(cutter.Cut(line));
    }
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    using namespace terravo::bench;
    struct Subject {
        const char* name;
        void (*run)(benchmark::State& state, terravo::Index count);
    };
    for (const Subject& subject :
         {Subject{"triangulate", Triangulate}, Subject{"areas", Areas}, Subject{"volume", Between},
          Subject{"difference", Difference}, Subject{"section", Section}}) {
        for (const terravo::Index count : {20000, 200000, 1000000}) {
            benchmark::RegisterBenchmark(
                BenchName("measure", subject.name, std::to_string(count)).c_str(),
                [subject, count](benchmark::State& state) { subject.run(state, count); })
                ->UseRealTime()
                ->Unit(benchmark::kMillisecond);
        }
    }
    return RunBenchmarks(argc, argv);
}
