#include "app/session/ContourMap.h"

#include "contour/LevelAreas.h"
#include "contour/LevelLines.h"
#include "export/MeshFile.h"
#include "plot2d/ColourScale.h"
#include "util/AppError.h"
#include "util/Stopwatch.h"

namespace terravo {

ContourMap::ContourMap(RunState& state, MessageService& messages, ClockService& clock)
    : state_(state), messages_(messages), clock_(clock),
      palette_(ColourScale::MakePalette(ColourScale::kPlanColours)) {}

MapReport ContourMap::DrawContourMap(DrawSurface& surface) {
    MapReport report;
    std::string error;
    try {
        SegmentFile segments(state_.workFolder + kSegmentFileName);
        DrawFrame(surface, report);
        error = DrawContours(surface, segments, report);
        segments.Close();
        report.segments = segments.Count();
    } catch (const AppError& failure) {
        error = failure.what();
        report.contours.errorNumber = failure.number();
    }
    if (!error.empty()) {
        messages_.ShowCritical(error, "Disegna/Livelli");
    }
    state_.lastDrawError = error;
    return report;
}

void ContourMap::DrawFrame(DrawSurface& surface, MapReport& report) {
    PlotFrame::PlotFrameRequest request;
    request.xMin = points.extentX.min;
    request.xMax = points.extentX.max;
    request.yMin = points.extentY.min;
    request.yMax = points.extentY.max;
    request.title = state_.Text(TextIndex::kPlotTitle) + " : " + points.sourceName;
    request.xTitle = std::string("x");
    request.yTitle = std::string("y");
    Stopwatch watch;
    report.frameDrawn =
        PlotFrame::DrawPlotFrame(surface, request, state_, messages_, clock_, showResultViews).ok;
    report.frameSeconds = watch.Lap();
}

std::string ContourMap::DrawContours(DrawSurface& surface, SegmentFile& segments,
                                     MapReport& report) {
    LevelRequest request;
    request.levelCount = options.levelCount;
    request.showValues = options.showLevelValues;
    request.decimalSeparator = state_.decimalSeparator;
    request.nudgeEnds = options.mode == MapMode::Lines;
    LevelSet levels = MakeLevelSet(points.extentZ, palette_, request);
    const ContourInput input{
        points,        triangulation_, options.showTriangles, options.showPerimeter,
        stopRequested, progress};
    if (options.mode == MapMode::Areas) {
        return DrawLevelAreas(surface, levels, input, state_, messages_, &report.contours);
    }
    return DrawLevelLines(surface, levels, input, segments, state_, &report.contours);
}

bool ContourMap::TriangulateAndShow3D() {
    const KeptTriangulation::Result& kept = Triangulation();
    if (kept.ierr == modDelaunay2D::Ierr::kStopped) {
        return false;
    }
    if (kept.ierr != modDelaunay2D::Ierr::kDone) {
        messages_.ShowCritical(state_.Text(TextIndex::kNoTriangulation) +
                                   " IERR = " + std::to_string(kept.ierr) + "\r\n" +
                                   state_.Text(TextIndex::kNoTriangulationAdvice),
                               " Prova");
        return false;
    }
    if (showTriangles3D) {
        showTriangles3D(points, kept.triangles, "Delaunay 2D : " + points.sourceName);
    }
    try {
        WriteMeshFile(state_.workFolder + kMeshFileName, points, kept.triangles);
    } catch (const AppError& error) {
        messages_.ShowCritical(error.what(), " Prova");
        return false;
    }
    return true;
}

} // namespace terravo
