#include "plot2d/PlotFrame.h"

#include "util/AppError.h"
#include "util/NumberText.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <exception>

namespace terravo::PlotFrame {
namespace {

using AxisRule::Axis;

constexpr const char* kSource = "DrawPlotFrame";
constexpr const char* kFontName = "MS Sans Serif";
constexpr const char* kCutMark = " . . . .";
constexpr float kLabelPoints = 8;
constexpr float kTitlePoints = 12;
constexpr double kTickPoints = 4;
constexpr Colour kTitleColour = kRed;

// What the stages of one drawing share.
struct Frame {
    DrawSurface& surface;
    const PlotFrameRequest& request;
    char separator;
    Axis xAxis;
    Axis yAxis;
    FrameScale edges;
    double tickX = 0;  // tick length
    double tickY = 0;  // negative: y grows upwards
    double xArrow = 0; // centre of the right margin
    double yArrow = 0; // centre of the top margin
};

void CheckExtents(const PlotFrameRequest& request, const RunState& run) {
    if (request.xMin > request.xMax) {
        throw AppError(ErrorNumber::kDrawing, run.texts[Text::ScaleErrorSource], "Error Scale X.");
    }
    if (request.yMin > request.yMax) {
        throw AppError(ErrorNumber::kDrawing, run.texts[Text::ScaleErrorSource], "Error Scale Y.");
    }
    for (const double limit : {request.xMin, request.xMax, request.yMin, request.yMax}) {
        if (!std::isfinite(limit)) {
            throw AppError(ErrorNumber::kOverflow, kSource,
                           "The extents of the data are not finite numbers.");
        }
    }
}

void ChooseAxes(Frame& frame, PlotFrameResult& result) {
    const PlotFrameRequest& request = frame.request;
    const auto xLimits = AxisRule::WidenNarrow({request.xMin, request.xMax});
    frame.xAxis = AxisRule::AxisLimits(xLimits.min, xLimits.max);
    result.xMinUsed = static_cast<float>(frame.xAxis.min);
    result.xMaxUsed = static_cast<float>(frame.xAxis.max);

    const auto yLimits = AxisRule::WidenEqualLabels({request.yMin, request.yMax},
                                                    request.yLabelFormat, frame.separator);
    frame.yAxis = AxisRule::AxisLimits(yLimits.min, yLimits.max);
    result.yMinUsed = static_cast<float>(frame.yAxis.min);
    result.yMaxUsed = static_cast<float>(frame.yAxis.max);
}

void SetScale(Frame& frame) {
    DrawSurface& surface = frame.surface;
    const Margins margins =
        FrameMargins(surface, frame.xAxis, frame.yAxis, frame.request, frame.separator);
    const FrameScale edges = ChooseFrameScale(frame.xAxis, frame.yAxis, margins,
                                              surface.PixelWidth(), surface.PixelHeight());
    frame.edges = edges;
    surface.SetAutoRedraw(true);
    surface.Scale(edges.left, edges.top, edges.right, edges.bottom);
    frame.tickX = surface.ScaleX(kTickPoints, ScaleUnit::Points, ScaleUnit::User);
    frame.tickY = surface.ScaleY(kTickPoints, ScaleUnit::Points, ScaleUnit::User);
    frame.xArrow = (edges.right + frame.xAxis.max) / 2;
    frame.yArrow = (edges.top + frame.yAxis.max) / 2;
}

void Clear(const Frame& frame) {
    const FrameScale& edges = frame.edges;
    frame.surface.Line(edges.left, edges.bottom, edges.right, edges.top, frame.surface.BackColor(),
                       Box::Filled);
}

void MeasurePixelSize(const Frame& frame, PlotFrameResult& result) {
    const int count = frame.request.pixelCount;
    const DrawSurface& surface = frame.surface;
    result.xPixelSize =
        static_cast<float>(std::fabs(surface.ScaleX(count, ScaleUnit::Pixels, ScaleUnit::User)));
    result.yPixelSize =
        static_cast<float>(std::fabs(surface.ScaleY(count, ScaleUnit::Pixels, ScaleUnit::User)));
}

void SetGridPen(const Frame& frame) {
    DrawSurface& surface = frame.surface;
    surface.SetFontSize(kLabelPoints);
    surface.SetDrawWidth(1);
    surface.SetDrawMode(DrawModes::kCopy);
    surface.SetForeColor(frame.request.axisColour);
}

void PrintXLabel(const Frame& frame, float x) {
    DrawSurface& surface = frame.surface;
    const auto place = static_cast<double>(x);
    const std::string label =
        NumberText::FormatScreen(place, frame.request.xLabelFormat, frame.separator);
    // A label rounded away from its tick would tell a wrong coordinate, so it is left out; with a
    // decimal comma only the digits before it are read back.
    if (frame.xAxis.step / 10 > std::fabs(place - NumberText::LeadingNumber(label))) {
        surface.SetCurrentX(place - surface.TextWidth(label) / 2);
        surface.SetCurrentY(frame.yAxis.min + frame.tickY / 2);
        surface.Print(label, NewLine::No);
    }
}

void DrawXGrid(const Frame& frame) {
    frame.surface.SetDrawStyle(DrawStyles::kDash);
    for (const float tick : AxisRule::Ticks(frame.xAxis)) {
        const auto x = static_cast<double>(tick);
        frame.surface.Line(x, frame.yAxis.min, x, frame.yAxis.max, frame.request.axisColour);
        PrintXLabel(frame, tick);
    }
}

void PrintXTitle(const Frame& frame) {
    const std::string& title = frame.request.xTitle;
    if (title.empty()) {
        return;
    }
    DrawSurface& surface = frame.surface;
    const double labelEnd = surface.Cursor().x;
    surface.SetCurrentX((labelEnd + frame.edges.right - surface.TextWidth(title)) / 2);
    surface.SetCurrentY(frame.yAxis.min + frame.tickY / 2);
    surface.Print(title, NewLine::No);
}

bool HoldsZero(const Axis& axis) {
    return axis.min <= 0 && axis.max >= 0;
}

void DrawYAxis(const Frame& frame) {
    if (!HoldsZero(frame.xAxis)) {
        return;
    }
    DrawSurface& surface = frame.surface;
    const Colour colour = frame.request.axisColour;
    const double barb = frame.yArrow + frame.tickY;
    surface.SetDrawStyle(DrawStyles::kSolid);
    surface.Line(0, frame.yAxis.min, 0, frame.yArrow, colour);
    surface.Line(0, frame.yArrow, -frame.tickX / 2, barb, colour);
    surface.Line(0, frame.yArrow, frame.tickX / 2, barb, colour);
}

void DrawYGrid(const Frame& frame) {
    DrawSurface& surface = frame.surface;
    surface.SetDrawStyle(DrawStyles::kDash);
    for (const float tick : AxisRule::Ticks(frame.yAxis)) {
        const auto y = static_cast<double>(tick);
        surface.Line(frame.xAxis.min, y, frame.xAxis.max, y, frame.request.axisColour);
        const std::string label =
            NumberText::FormatScreen(y, frame.request.yLabelFormat, frame.separator);
        surface.SetCurrentX(frame.edges.left);
        surface.SetCurrentY(y - surface.TextHeight(label) / 2);
        surface.Print(label, NewLine::No);
    }
}

void PrintYTitle(const Frame& frame) {
    if (!frame.request.yTitle.empty()) {
        frame.surface.SetCurrentX(frame.edges.left);
        frame.surface.SetCurrentY(frame.edges.top);
        frame.surface.Print(frame.request.yTitle, NewLine::No);
    }
}

void DrawXAxis(const Frame& frame) {
    if (!HoldsZero(frame.yAxis)) {
        return;
    }
    DrawSurface& surface = frame.surface;
    const Colour colour = frame.request.axisColour;
    const double barb = frame.xArrow - frame.tickX;
    surface.SetDrawStyle(DrawStyles::kSolid);
    surface.Line(frame.xAxis.min, 0, frame.xArrow, 0, colour);
    surface.Line(frame.xArrow, 0, barb, -frame.tickY / 2, colour);
    surface.Line(frame.xArrow, 0, barb, frame.tickY / 2, colour);
}

void PrintTitle(const Frame& frame) {
    const std::string& title = frame.request.title;
    if (title.empty()) {
        return;
    }
    DrawSurface& surface = frame.surface;
    surface.SetFontSize(kTitlePoints);
    surface.SetFontBold(true);
    surface.SetForeColor(kTitleColour);
    surface.SetCurrentY(frame.edges.top);
    const double width = surface.TextWidth(title);
    const auto room = static_cast<double>(surface.ScaleWidth());
    if (width <= room) {
        surface.SetCurrentX((frame.edges.right + frame.edges.left - width) / 2);
        surface.Print(title, NewLine::Yes);
    } else {
        surface.SetCurrentX(frame.edges.left);
        surface.Print(ShortenedTitle(title, width, surface.TextWidth(kCutMark), room),
                      NewLine::Yes);
    }
}

void DrawAxesAndTitles(const Frame& frame) {
    SetGridPen(frame);
    DrawXGrid(frame);
    PrintXTitle(frame);
    DrawYAxis(frame);
    DrawYGrid(frame);
    PrintYTitle(frame);
    DrawXAxis(frame);
    PrintTitle(frame);
}

void DrawStages(Frame& frame, const RunState& run, PlotFrameResult& result) {
    CheckExtents(frame.request, run);
    ChooseAxes(frame, result);
    SetScale(frame);
    Clear(frame);
    MeasurePixelSize(frame, result);
    if (frame.request.drawAxes) {
        DrawAxesAndTitles(frame);
    }
    frame.surface.SetDrawStyle(DrawStyles::kSolid);
    frame.surface.SetAutoRedraw(frame.request.autoRedrawAfter);
}

double SecondsSince(double start, double now) {
    constexpr double kSecondsOfDay = 86400;
    return now >= start ? now - start : now - start + kSecondsOfDay;
}

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::size_t CountCharacters(std::string_view utf8) {
    return static_cast<std::size_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return !ContinuesCharacter(c); }));
}

std::string_view FirstCharacters(std::string_view utf8, std::size_t count) {
    std::size_t end = 0;
    for (; end < utf8.size(); ++end) {
        if (!ContinuesCharacter(utf8[end]) && count-- == 0) {
            break;
        }
    }
    return utf8.substr(0, end);
}

} // namespace

Margins FrameMargins(DrawSurface& surface, const Axis& xAxis, const Axis& yAxis,
                     const PlotFrameRequest& request, char separator) {
    const auto label = [separator](double value, const std::string& format) {
        return NumberText::FormatScreen(value, format, separator);
    };
    const ScaleUnit modeBefore = surface.ScaleMode();
    surface.SetScaleMode(ScaleUnit::Pixels);
    surface.SetFontName(kFontName);
    surface.SetFontSize(kLabelPoints);
    surface.SetFontBold(false);
    Margins margins;
    margins.left = std::max(surface.TextWidth(label(yAxis.min, request.yLabelFormat) + "W"),
                            surface.TextWidth(label(yAxis.max, request.yLabelFormat) + "W"));
    margins.right = surface.TextWidth(label(xAxis.max, request.xLabelFormat)) / 2 +
                    surface.TextWidth(request.xTitle + "W");
    margins.bottom = 2 * std::fabs(surface.TextHeight("H"));
    surface.SetFontSize(kTitlePoints);
    margins.top = std::fabs(surface.TextHeight(request.title)) + margins.bottom;
    surface.SetScaleMode(modeBefore);
    return margins;
}

FrameScale ChooseFrameScale(const Axis& xAxis, const Axis& yAxis, const Margins& margins,
                            double pixelWidth, double pixelHeight) {
    const double drawableWidth = pixelWidth - margins.left - margins.right;
    if (!(drawableWidth > 0)) {
        throw AppError(ErrorNumber::kDivisionByZero, kSource,
                       "The drawing area is too narrow for the axis labels.");
    }
    const double unitsX = static_cast<double>(xAxis.range) / drawableWidth;
    const double unitsY =
        static_cast<double>(yAxis.range) / (pixelHeight + margins.bottom + margins.top);
    return {xAxis.min - margins.left * unitsX, xAxis.max + margins.right * unitsX,
            yAxis.min - margins.bottom * unitsY, yAxis.max + margins.top * unitsY};
}

std::string ShortenedTitle(std::string_view title, double textWidth, double markWidth,
                           double room) {
    const std::size_t length = CountCharacters(title);
    const double share = std::floor((room - markWidth) * static_cast<double>(length) / textWidth);
    const auto kept = share > 0 ? std::min(static_cast<std::size_t>(share), length) : 0;
    return std::string(FirstCharacters(title, kept)) + kCutMark;
}

PlotFrameResult DrawPlotFrame(DrawSurface& surface, const PlotFrameRequest& request,
                              const RunState& run, const ClockService& clock) {
    const double start = clock.SecondsOfDay();
    PlotFrameResult result;
    Frame frame{surface, request, run.decimalSeparator, {}, {}, {}};
    const auto failureOf = [&run](const std::string& description, const std::string& source) {
        return Message{description, run.texts[Text::ErrorTitle] + source};
    };
    try {
        DrawStages(frame, run, result);
    } catch (const AppError& error) {
        result.failure = failureOf(error.what(), error.source());
    } catch (const std::exception& error) {
        result.failure = failureOf(error.what(), kSource);
    }
    result.elapsed = static_cast<float>(SecondsSince(start, clock.SecondsOfDay()));
    return result;
}

} // namespace terravo::PlotFrame
