// The sheet in its window: making it, its index, and the frames of panning and zooming.
//
// Data: random points on a smooth terrain, an A1 sheet of 50 levels with the values along index
// lines; a window of 1000 x 700 pixels. Method: the scene is made before the clock of the frames
// starts. A frame is what the window shows after one step of the pointer or the wheel; panning goes
// to and fro by steps of 23 pixels in x and 17 in y.
#include "BenchData.h"
#include "BenchRun.h"
#include "app/session/SheetMaker.h"
#include "export/SheetFrame.h"
#include "export/SheetPainter.h"
#include "plot2d/SurfaceFont.h"

#include <QGuiApplication>

#include <cmath>
#include <map>

namespace terravo::bench {
namespace {

constexpr QSize kWindow(1000, 700);

LevelRule FiftyLevels() {
    LevelRule rule;
    rule.count = 50;
    return rule;
}

struct BenchSheet {
    explicit BenchSheet(Index count) : survey(PointSet(KeptSurvey(Layout::Random, count))) {
        static_cast<void>(survey.Triangulation());
        plan.paper = *ParsePaperSize("A1");
    }

    std::shared_ptr<const SheetScene> Make() {
        SurveyContours contours(survey);
        SheetMaker maker(contours, state);
        return std::make_shared<const SheetScene>(
            *maker.Make(plan, FiftyLevels(), SheetTextMeasure()));
    }

    Survey survey;
    RunState state;
    SheetPlan plan;
};

BenchSheet& KeptSheet(Index count) {
    static std::map<Index, std::unique_ptr<BenchSheet>> kept;
    std::unique_ptr<BenchSheet>& sheet = kept[count];
    if (!sheet) {
        sheet = std::make_unique<BenchSheet>(count);
    }
    return *sheet;
}

// What a user may look at.
struct Look {
    const char* name;
    double zoom; // 1: the whole sheet
    bool bands;
    bool points;
};

// The whole sheet in the window, then as many times larger around its middle.
SheetPlace PlaceFor(const SheetScene& scene, double zoom) {
    const double fit = std::min(kWindow.width() / scene.width, kWindow.height() / scene.height);
    const SheetPoint middle = scene.map.Middle();
    SheetPlace place;
    place.pixels = fit * zoom;
    place.corner = QPointF(std::round(kWindow.width() / 2 - middle.x * place.pixels),
                           std::round(kWindow.height() / 2 - middle.y * place.pixels));
    return place;
}

std::shared_ptr<const SheetScene> SceneFor(Index count, const Look& look) {
    static std::map<std::tuple<Index, bool, bool>, std::shared_ptr<const SheetScene>> kept;
    auto& scene = kept[{count, look.bands, look.points}];
    if (!scene) {
        BenchSheet& sheet = KeptSheet(count);
        sheet.plan.Show(SheetLayer::Bands, look.bands);
        sheet.plan.Show(SheetLayer::Points, look.points);
        scene = sheet.Make();
    }
    return scene;
}

void Make(benchmark::State& state, Index count) {
    BenchSheet& sheet = KeptSheet(count);
    for (auto _ : state) {
        benchmark::DoNotOptimize(sheet.Make());
    }
}

void FirstFrame(benchmark::State& state, Index count, Look look) {
    const auto scene = SceneFor(count, look);
    for (auto _ : state) {
        SheetFrame frame;
        frame.SetSize(kWindow);
        frame.SetScene(scene);
        benchmark::DoNotOptimize(frame.Picture(PlaceFor(*scene, look.zoom), false));
    }
    state.counters["vertices"] = static_cast<double>(scene->vertices.size());
    state.counters["texts"] = static_cast<double>(scene->texts.size());
}

void Pan(benchmark::State& state, Index count, Look look) {
    const auto scene = SceneFor(count, look);
    SheetFrame frame;
    frame.SetSize(kWindow);
    frame.SetScene(scene);
    SheetPlace place = PlaceFor(*scene, look.zoom);
    frame.Picture(place, false);
    int step = 0;
    for (auto _ : state) {
        const double sign = (++step / 8) % 2 == 0 ? 1 : -1;
        place.corner += sign * QPointF(23, 17);
        benchmark::DoNotOptimize(frame.Picture(place, true));
    }
}

// Steps of the wheel to and fro, each a little more than the ones before, so that none is drawn
// twice.
void Zoom(benchmark::State& state, Index count, Look look, bool moving) {
    const auto scene = SceneFor(count, look);
    SheetFrame frame;
    frame.SetSize(kWindow);
    frame.SetScene(scene);
    const double zooms[] = {1, 1.15, 1.3, 1.15};
    int step = 0;
    for (const double zoom : zooms) { // the levels of detail are there
        frame.Picture(PlaceFor(*scene, look.zoom * zoom), moving);
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            frame.Picture(PlaceFor(*scene, look.zoom * zooms[++step % 4]), moving));
    }
}

void Register(Index count) {
    const auto add = [&](const std::string& name, auto function, auto... arguments) {
        benchmark::RegisterBenchmark(BenchName("sheet", name, std::to_string(count)).c_str(),
                                     function, count, arguments...)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    add("make", Make);
    for (const Look& look :
         {Look{"whole", 1, false, false}, Look{"x4", 4, false, false},
          Look{"x16", 16, false, false}, Look{"whole with points", 1, false, true},
          Look{"whole with bands", 1, true, false}, Look{"x4 with bands", 4, true, false}}) {
        add(std::string("first ") + look.name, FirstFrame, look);
        add(std::string("pan ") + look.name, Pan, look);
        add(std::string("zoom ") + look.name, Zoom, look, true);
        add(std::string("still ") + look.name, Zoom, look, false);
    }
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    terravo::LoadSurfaceFonts();
    for (const terravo::Index count : {100000, 1000000}) {
        terravo::bench::Register(count);
    }
    return terravo::bench::RunBenchmarks(argc, argv);
}
