// Laying breaklines into a triangulation, against a well-known library.
//
// Data: a million scattered points, their triangulation, and segments between points that do not
// cross; two chains that bulge towards one segment. Method: timed by the clock of the processor
// from the finished triangulation on: for ours the adoption of its triangles and the making of the
// marks included, for the library the insertion of the constraints alone. The number of constrained
// edges is reported, so that a run in which the two disagree is seen.
#include "BenchData.h"
#include "BenchRun.h"
#include "CpuStopwatch.h"
#include "survey/surface/LiveSurface.h"
#include "triangulation/constrained/ConstrainedSurface.h"
#include "triangulation/exact/ExactTriangulation.h"

#ifdef TERRAVO_BENCH_PEER
#include "PeerDelaunay.h"
#endif

#include <cmath>
#include <map>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace terravo::bench {
namespace {

constexpr Index kPoints = 1000000;

struct Lines {
    Array1<PlanPoint> coord;
    Array1<double> heights;
    TriangleList base;
    std::vector<std::pair<Index, Index>> segments; // between points
};

// Ends of segments of about a length, each beginning in a cell of its own, so that none cross.
std::vector<std::pair<Index, Index>> Segments(const Array1<PlanPoint>& coord, Index count,
                                              double length) {
    PlanPoint low = coord[1];
    PlanPoint high = coord[1];
    for (const PlanPoint& p : coord) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    const double cell = std::sqrt((high.x - low.x) * (high.y - low.y) / count);
    const auto side = static_cast<Index>(std::ceil((high.x - low.x) / cell));
    // Of each cell the first point and the one whose distance from it comes nearest to the length.
    std::map<std::pair<Index, Index>, std::pair<Index, Index>> ends;
    const auto off = [&](Index a, Index b) {
        return std::fabs(std::hypot(coord[a].x - coord[b].x, coord[a].y - coord[b].y) - length);
    };
    for (Index i = 1; i <= coord.UpperBound(); ++i) {
        const std::pair at{static_cast<Index>((coord[i].x - low.x) / cell),
                           static_cast<Index>((coord[i].y - low.y) / cell)};
        auto& [from, to] = ends.try_emplace(at, i, 0).first->second;
        if (i != from && (to == 0 || off(from, i) < off(from, to))) {
            to = i;
        }
    }
    std::vector<std::pair<Index, Index>> segments;
    for (const auto& [at, pair] : ends) {
        if (pair.second != 0 && at.first < side) {
            segments.push_back(pair);
        }
    }
    return segments;
}

Lines Scattered(Index count, double length) {
    Lines lines;
    lines.coord = PlanOf(KeptSurvey(Layout::Random, kPoints));
    lines.heights = Array1<double>(kPoints);
    lines.segments = Segments(lines.coord, count, length);
    TriangulateExactly(lines.coord, lines.base);
    return lines;
}

// Two chains of so many points each that bulge towards the segment between them, or away from it.
Lines Bulging(Index count, bool towards) {
    Lines lines;
    lines.coord = {{0, 0}, {1000, 0}};
    for (const int side : {-1, 1}) {
        for (Index i = 1; i <= count; ++i) {
            const double x = static_cast<double>(i) / (count + 1);
            const double bulge = 4 * x * (1 - x);
            lines.coord.Append({1000 * x, side * (towards ? 2 - bulge : 1 + bulge)});
        }
    }
    lines.heights = Array1<double>(lines.coord.UpperBound());
    lines.segments = {{1, 2}};
    TriangulateExactly(lines.coord, lines.base);
    return lines;
}

const Lines& Kept(const std::string& name, Lines (*make)(const std::string&)) {
    static std::map<std::string, Lines> kept;
    auto found = kept.find(name);
    if (found == kept.end()) {
        found = kept.emplace(name, make(name)).first;
    }
    return found->second;
}

Lines MakeNamed(const std::string& name) {
    if (name == "towards" || name == "away") {
        return Bulging(16000, name == "towards");
    }
    const Index count = std::stoi(name);
    return Scattered(count, count < 0 ? 0 : name.ends_with("long") ? 300 : 30);
}

void Ours(benchmark::State& state, const std::string& name) {
    const Lines& lines = Kept(name, MakeNamed);
    SurfaceConstraints constraints;
    for (const auto& [from, to] : lines.segments) {
        const PlanPoint& a = lines.coord[from];
        const PlanPoint& b = lines.coord[to];
        constraints.breaklines.push_back({{{a.x, a.y, 0}, {b.x, b.y, 0}}, false, ""});
    }
    constraints.vertexTolerance = 0; // as the library lays them
    std::int64_t edges = 0;
    for (auto _ : state) {
        CpuStopwatch watch;
        const ConstrainedSurface surface =
            MakeConstrainedSurface(lines.coord, lines.heights, lines.base, constraints);
        state.SetIterationTime(watch.Lap());
        edges = surface.lineEdges;
    }
    state.counters["edges"] = static_cast<double>(edges);
}

#ifdef TERRAVO_BENCH_PEER
void Peer(benchmark::State& state, const std::string& name) {
    const Lines& lines = Kept(name, MakeNamed);
    PeerRun run;
    for (auto _ : state) {
        run = ConstrainWithPeer(lines.coord, lines.segments);
        state.SetIterationTime(run.seconds);
    }
    state.counters["edges"] = static_cast<double>(run.constrained);
}
#endif

// One point of a million excluded and taken back, over and over: by the mesh that follows edits, by
// the survey's own books, and by the survey from the triangulation on.
void Edit(benchmark::State& state, const std::string& way) {
    Survey survey(KeptSurvey(Layout::Random, kPoints));
    const bool isLive = way == "live";
    static_cast<void>(survey.Surface());
    std::unique_ptr<LiveSurface> live = isLive ? std::make_unique<LiveSurface>(survey) : nullptr;
    std::mt19937 random(7);
    for (auto _ : state) {
        const auto point = static_cast<Index>(1 + random() % kPoints);
        double seconds = 0;
        for (const bool excluded : {true, false}) {
            const SurfacePlan plan = WithExcluded(survey.Plan(), {point}, excluded);
            CpuStopwatch watch;
            if (isLive) {
                benchmark::DoNotOptimize(live->Follow(plan));
            } else {
                survey.SetPlan(plan);
            }
            if (way == "anew") {
                benchmark::DoNotOptimize(survey.Surface().triangles.count);
            }
            seconds += watch.Lap();
            if (isLive) {
                survey.SetPlan(plan);
            }
        }
        state.SetIterationTime(seconds / 2);
    }
}

void BeginEdits(benchmark::State& state) {
    Survey survey(KeptSurvey(Layout::Random, kPoints));
    static_cast<void>(survey.Surface());
    for (auto _ : state) {
        CpuStopwatch watch;
        const LiveSurface live(survey);
        state.SetIterationTime(watch.Lap());
    }
}

void Register(const std::string& name) {
    const auto add = [&](const char* who, auto run) {
        benchmark::RegisterBenchmark(BenchName("surface", name, who).c_str(), run)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    };
    add("ours", [=](benchmark::State& state) { Ours(state, name); });
#ifdef TERRAVO_BENCH_PEER
    if (name != "away") { // the library takes minutes
        add("cgal", [=](benchmark::State& state) { Peer(state, name); });
    }
#endif
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    for (const char* name : {"1000", "10000", "100000", "1000long", "towards", "away"}) {
        terravo::bench::Register(name);
    }
    using terravo::bench::BenchName;
    for (const char* way : {"live", "books", "anew"}) {
        benchmark::RegisterBenchmark(
            BenchName("edit", "exclude", way).c_str(),
            [way](benchmark::State& state) { terravo::bench::Edit(state, way); })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark(BenchName("edit", "begin", "live").c_str(),
                                 terravo::bench::BeginEdits)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    return terravo::bench::RunBenchmarks(argc, argv);
}
