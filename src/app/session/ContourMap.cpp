#include "app/session/ContourMap.h"

#include "contour/LevelAreas.h"
#include "plot2d/ColourScale.h"
#include "plot2d/PlotFrame.h"
#include "util/AppError.h"
#include "util/Stopwatch.h"

namespace terravo {

ContourMap::ContourMap(const Survey& survey, const RunState& run, MessageService& messages,
                       const ClockService& clock)
    : survey_(survey), run_(run), messages_(messages), clock_(clock),
      palette_(ColourScale::MakePalette(ColourScale::kPlanColours)) {}

MapReport ContourMap::Draw(DrawSurface& surface, const MapOptions& options, const StopToken& stop,
                           const LevelSink& sink) const {
    MapReport report;
    DrawFrame(surface, report);
    try {
        report.contours = DrawContours(surface, options, stop, sink);
    } catch (const AppError& failure) {
        report.contours.error = failure.what();
        report.contours.errorNumber = failure.number();
    }
    return report;
}

void ContourMap::DrawFrame(DrawSurface& surface, MapReport& report) const {
    const PointSet& points = survey_.ShownPoints();
    PlotFrame::PlotFrameRequest request;
    request.xMin = points.extentX.min;
    request.xMax = points.extentX.max;
    request.yMin = points.extentY.min;
    request.yMax = points.extentY.max;
    request.title = run_.texts[Text::PlotTitle] + " : " + points.sourceName;
    request.xTitle = std::string("x");
    request.yTitle = std::string("y");
    Stopwatch watch;
    report.frameFailure = PlotFrame::DrawPlotFrame(surface, request, run_, clock_).failure;
    report.frameSeconds = watch.Lap();
}

ContourReport ContourMap::DrawContours(DrawSurface& surface, const MapOptions& options,
                                       const StopToken& stop, const LevelSink& sink) const {
    LevelRequest request;
    request.showValues = options.showLevelValues;
    request.decimalSeparator = run_.decimalSeparator;
    request.nudgeEnds = options.mode == MapMode::Lines;
    LevelSet levels =
        MakeLevelSet(options.levels, survey_.ShownPoints().extentZ, palette_, request);
    const ContourInput input{survey_,
                             run_,
                             options.showTriangles,
                             options.showPerimeter,
                             stop,
                             FewestLevelsOf(options.levels),
                             ColourBelowFirst(options.levels, palette_)};
    if (options.mode == MapMode::Areas) {
        return DrawLevelAreas(surface, levels, input, messages_);
    }
    return DrawLevelLines(surface, levels, input, sink);
}

} // namespace terravo
