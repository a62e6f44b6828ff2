// Drawing the contour map of a kept triangulation, as lines and as areas.
//
// Data: random points on a smooth terrain, their triangulation made before the clock starts; a
// picture of 1200 x 900 pixels; the segment file in a temporary folder. Method: whole redraws, with
// the parts as the drawing itself reports them, in milliseconds a redraw. Areas are cut and filled
// triangle by triangle, which is one part, and write no segments.
#include "BenchData.h"
#include "BenchMap.h"
#include "BenchRun.h"
#include "plot2d/RasterSurface.h"

#include <QGuiApplication>

#include <utility>

namespace terravo::bench {
namespace {

constexpr int kWidth = 1200;
constexpr int kHeight = 900;

struct Parts {
    double frame = 0;
    double cut = 0;
    double paint = 0;
    double write = 0;

    void Add(const MapReport& report) {
        frame += report.frameSeconds;
        cut += report.contours.cut;
        paint += report.contours.draw;
        write += report.contours.write;
    }
};

void ReportParts(benchmark::State& state, const Parts& parts) {
    const auto report = [&](const char* name, double seconds) {
        state.counters[name] =
            benchmark::Counter(seconds * 1e3, benchmark::Counter::kAvgIterations);
    };
    report("frame", parts.frame);
    report("cut", parts.cut);
    report("paint", parts.paint);
    report("write", parts.write);
}

void Draw(benchmark::State& state, Index count, const MapOptions& options) {
    BenchMap& kept = KeptMap(count);
    RasterSurface surface(kWidth, kHeight);
    surface.SetBackColor(kBlack);
    Parts parts;
    std::int64_t segments = 0;
    for (auto _ : state) {
        const MapReport report = kept.Draw(surface, options);
        parts.Add(report);
        segments = report.contours.segments;
    }
    if (!kept.messages.boxes.empty()) {
        state.SkipWithError(kept.messages.boxes.front().text.c_str());
    }
    if ((segments > 0) != (options.mode == MapMode::Lines)) {
        state.SkipWithError("not drawn in the mode asked for");
    }
    ReportParts(state, parts);
    state.counters["segments"] = static_cast<double>(segments);
    state.counters["triangles"] = kept.survey.Triangulation().triangles.count;
}

void Register(Index count) {
    const auto add = [&](const char* variant, const MapOptions& options) {
        const std::string name = BenchName("draw", variant, std::to_string(count));
        benchmark::RegisterBenchmark(name.c_str(), Draw, count, options)
            ->Unit(benchmark::kMillisecond);
    };
    MapOptions options;
    options.levels = RuleByCount(10);
    add("10", options);
    options.showLevelValues = true;
    add("10 labelled", options);
    options.showLevelValues = false;
    options.mode = MapMode::Areas;
    add("10 areas", options);
    options.mode = MapMode::Lines;
    options.levels = RuleByCount(50);
    add("50", options);
}

// Each option beside the map of 10 lines, and beside the areas, as a click in the window redraws
// the whole map.
void RegisterChanges(Index count) {
    using Change = void (*)(MapOptions&);
    const std::pair<const char*, Change> changes[] = {
        {"labels", [](MapOptions& options) { options.showLevelValues = true; }},
        {"triangles", [](MapOptions& options) { options.showTriangles = true; }},
        {"perimeter", [](MapOptions& options) { options.showPerimeter = true; }},
        {"2 levels", [](MapOptions& options) { options.levels = RuleByCount(2); }},
        {"50 levels", [](MapOptions& options) { options.levels = RuleByCount(50); }},
        {"100 levels", [](MapOptions& options) { options.levels = RuleByCount(100); }},
    };
    for (const auto& [mode, title] :
         {std::pair{MapMode::Lines, "lines"}, std::pair{MapMode::Areas, "areas"}}) {
        MapOptions before;
        before.levels = RuleByCount(10);
        before.mode = mode;
        const auto add = [&, of = title](const char* change, const MapOptions& options) {
            const std::string name = BenchName("change", of, change, std::to_string(count));
            benchmark::RegisterBenchmark(name.c_str(), Draw, count, options)
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime();
        };
        add("10 levels", before);
        for (const auto& [name, change] : changes) {
            MapOptions options = before;
            change(options);
            add(name, options);
        }
    }
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    for (const auto count : terravo::bench::kSizes) {
        terravo::bench::Register(count);
        terravo::bench::RegisterChanges(count);
    }
    return terravo::bench::RunBenchmarks(argc, argv);
}
