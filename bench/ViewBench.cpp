// One picture of the axonometric view: what a turn costs, ten times a second.
//
// Data: random points with their triangles on a picture of 1000 x 700 pixels. Method: whole
// redraws, frame and marks in colour, each turned a degree further, as the rotation does it.
#include "BenchData.h"
#include "BenchRun.h"
#include "plot2d/RasterSurface.h"
#include "support/FakeServices.h"
#include "survey/Survey.h"
#include "view3d/AxonometricView.h"

#include <QGuiApplication>

namespace terravo::bench {
namespace {

void Turn(benchmark::State& state, Index count, bool withTriangles) {
    const PointSet& points = KeptSurvey(Layout::Random, count);
    FakeMessages messages;
    const RunState run;
    AxonometricView view;
    if (withTriangles) {
        const Survey survey(points);
        view.Show(ViewData::Triangoli(points.x, points.y, points.z,
                                      TriangleTable(survey.Triangulation().triangles), "survey"));
    } else {
        view.Show(ViewData::Punti(points.x, points.y, points.z, "survey", messages));
    }
    RasterSurface surface(1000, 700);
    surface.SetBackColor(kBlack);
    bool isDrawn = !view.Redraw(surface, true, run);
    ViewParameters parameters = view.Parameters();
    parameters.rotating = true;
    for (auto _ : state) {
        parameters.theta += 0.017453292F;
        view.SetParameters(parameters);
        isDrawn = !view.Redraw(surface, false, run) && isDrawn;
    }
    if (!isDrawn) {
        state.SkipWithError("the picture was not drawn");
    }
}

void Register(Index count) {
    for (const bool withTriangles : {true, false}) {
        const std::string name =
            BenchName("view", withTriangles ? "triangles" : "points", std::to_string(count));
        benchmark::RegisterBenchmark(name.c_str(), Turn, count, withTriangles)
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    for (const auto count : terravo::bench::kSizes) {
        terravo::bench::Register(count);
    }
    return terravo::bench::RunBenchmarks(argc, argv);
}
