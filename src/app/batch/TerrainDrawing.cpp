#include "app/batch/TerrainDrawing.h"

#include "view3d/gl/TerrainFurniture.h"
#include "view3d/gl/TerrainPicture.h"

#include <QPainter>

namespace terravo {
namespace {

TerrainCamera CameraFor(const TerrainCall& call, const TerrainReach& reach, int width, int height) {
    TerrainCamera camera;
    camera.SetSize(width, height);
    camera.SetReach(reach);
    camera.SetDirection(call.view.azimuth, call.view.elevation);
    camera.SetExaggeration(call.exaggeration.value_or(ProposedExaggeration(reach)));
    camera.Fit();
    return camera;
}

} // namespace

TerrainDrawing DrawTerrain(const TerrainCall& call, const TerrainContent& content,
                           const TriangleList& triangles, int width, int height,
                           const RunState& run) {
    const TerrainCamera camera = CameraFor(call, content.frame.reach, width, height);
    const OffscreenGl graphics;
    TerrainRenderer renderer;
    renderer.Load(content);
    if (call.plan.triangles) {
        renderer.LoadSides(SidesOf(triangles));
    }
    constexpr double kUsualHeight = 700; // pixels, at which a line is as wide as it says
    constexpr double kThinnest = 0.6;
    TerrainPixels pixels = DrawTerrainPicture(
        renderer,
        {call.plan, camera, width, height, std::max(kThinnest, height / kUsualHeight), false, {}});
    TerrainDrawing drawing;
    drawing.picture = QImage(pixels.bytes.data(), width, height, 3 * width, QImage::Format_RGB888)
                          .convertToFormat(QImage::Format_RGB32);
    QPainter painter(&drawing.picture);
    PaintTerrainFurniture(painter, {call.plan, camera, content.frame, run.texts,
                                    run.decimalSeparator, call.heightUnit, width, height});
    const std::size_t segments = content.Lines(TerrainLine::Contour).size() +
                                 content.Lines(TerrainLine::IndexContour).size();
    drawing.figures = {camera.Azimuth(),
                       camera.Elevation(),
                       camera.Exaggeration(),
                       width,
                       height,
                       static_cast<std::int64_t>(segments)};
    return drawing;
}

} // namespace terravo
