// The terrain: getting ready, frames at rest and in motion, picking.
//
// Data: scattered points; a frame of 1000 x 700 pixels, coloured by height with 20 contours.
// Method: OpenGL without a window, by whatever draws it on this machine; a frame is waited for to
// its end. The clock on the wall, since graphics use threads of their own.
#include "BenchData.h"
#include "BenchRun.h"
#include "contour/LevelRule.h"
#include "plot2d/ColourScale.h"
#include "survey/Survey.h"
#include "view3d/gl/TerrainPicture.h"
#include "view3d/terrain/TerrainPick.h"

#include <map>
#include <memory>

namespace terravo::bench {
namespace {

constexpr int kWidth = 1000;
constexpr int kHeight = 700;

struct Scene {
    Survey survey;
    ContourSet contours;
    TerrainContent content;
};

bool IsIndex(Index level) {
    return level % 5 == 0;
}

const Scene& KeptScene(Index count) {
    static std::map<Index, std::unique_ptr<Scene>> kept;
    std::unique_ptr<Scene>& scene = kept[count];
    if (!scene) {
        scene = std::make_unique<Scene>();
        scene->survey.Replace(KeptSurvey(Layout::Random, count));
        const ShownSurface surface = scene->survey.Surface();
        const LevelSet levels = MakeLevelSet(RuleByCount(20), surface.points.extentZ,
                                             ColourScale::MakePalette(256), LevelRequest());
        scene->contours = *MakeContourSet(surface.points, surface.triangles, levels);
        scene->content = MakeTerrainContent(surface, {scene->contours, IsIndex});
    }
    return *scene;
}

void Triangulate(benchmark::State& state, Index count) {
    const Array1<PlanPoint> coord = PlanOf(KeptSurvey(Layout::Random, count));
    for (auto _ : state) {
        benchmark::DoNotOptimize(TriangulatePoints(coord));
    }
}

void Prepare(benchmark::State& state, Index count) {
    const Scene& scene = KeptScene(count);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            MakeTerrainContent(scene.survey.Surface(), {scene.contours, IsIndex}));
    }
}

// A frame buffer to draw into.
class Target {
public:
    Target()
        : frame_(gl::MakeFrameBuffer()), colours_(gl::MakeRenderBuffer()),
          depths_(gl::MakeRenderBuffer()) {
        glBindFramebuffer(GL_FRAMEBUFFER, frame_.Number());
        Attach(colours_, GL_RGBA8, GL_COLOR_ATTACHMENT0);
        Attach(depths_, GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT);
    }

private:
    static void Attach(const gl::RenderBuffer& part, GLenum form, GLenum place) {
        glBindRenderbuffer(GL_RENDERBUFFER, part.Number());
        glRenderbufferStorage(GL_RENDERBUFFER, form, kWidth, kHeight);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, place, GL_RENDERBUFFER, part.Number());
    }

    gl::FrameBuffer frame_;
    gl::RenderBuffer colours_;
    gl::RenderBuffer depths_;
};

TerrainCamera CameraOver(const Scene& scene) {
    TerrainCamera camera;
    camera.SetSize(kWidth, kHeight);
    camera.SetReach(scene.content.frame.reach);
    camera.SetExaggeration(ProposedExaggeration(scene.content.frame.reach));
    camera.Fit();
    return camera;
}

void Load(benchmark::State& state, Index count) {
    const OffscreenGl graphics;
    const Scene& scene = KeptScene(count);
    TerrainRenderer renderer;
    for (auto _ : state) {
        renderer.Load(scene.content);
        glFinish();
    }
}

void Frame(benchmark::State& state, Index count, bool isMoving, bool hasContours) {
    const OffscreenGl graphics;
    const Scene& scene = KeptScene(count);
    const Target target;
    TerrainRenderer renderer;
    renderer.Load(scene.content);
    TerrainCamera camera = CameraOver(scene);
    TerrainPlan plan;
    plan.contours = hasContours;
    const TerrainShot shot{plan, camera, kWidth, kHeight, 1, isMoving, {}};
    renderer.Draw(shot, {0, 0, kWidth, kHeight});
    glFinish();
    for (auto _ : state) {
        camera.Orbit(5, 0);
        renderer.Draw(shot, {0, 0, kWidth, kHeight});
        glFinish();
    }
    const std::size_t corners = isMoving && !scene.content.coarse.empty()
                                    ? scene.content.coarse.size()
                                    : scene.content.mesh.corners.size();
    state.counters["triangles"] = static_cast<double>(corners / 3);
}

void Pick(benchmark::State& state, Index count) {
    const Scene& scene = KeptScene(count);
    const TerrainPick pick(scene.content.mesh);
    const TerrainCamera camera = CameraOver(scene);
    int pixel = 0;
    for (auto _ : state) {
        pixel += 7919;
        benchmark::DoNotOptimize(
            pick.FirstOn(camera.RayAt(pixel % kWidth, pixel / kWidth % kHeight)));
    }
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    using namespace terravo::bench;
    const auto add = [](const char* what, terravo::Index count, auto run) {
        benchmark::RegisterBenchmark(BenchName("terrain", what, std::to_string(count)).c_str(),
                                     [run, count](benchmark::State& state) { run(state, count); })
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    };
    for (const terravo::Index count : {50000, 1000000}) {
        add("triangulate", count, Triangulate);
        add("prepare", count, Prepare);
        add("load", count, Load);
        add("rest", count, [](auto& state, auto n) { Frame(state, n, false, true); });
        add("rest-plain", count, [](auto& state, auto n) { Frame(state, n, false, false); });
        add("motion", count, [](auto& state, auto n) { Frame(state, n, true, true); });
        add("pick", count, Pick);
    }
    return RunBenchmarks(argc, argv);
}
