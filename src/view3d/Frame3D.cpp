#include "view3d/Frame3D.h"

#include "plot2d/AxisRule.h"
#include "plot2d/PlotFrame.h"
#include "util/AppError.h"
#include "util/NumberText.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace terravo {
namespace {

using AxisRule::Axis;
using modUtilita::RoundHalfEven;

constexpr const char* kSource = "DrawFrame3D";
constexpr const char* kXFormat = "#0.0##";
constexpr const char* kYFormat = "#0.0##";
constexpr const char* kZFormat = "#0.000";
constexpr double kTick = 4;          // pixels
constexpr double kLabelGap = 3;      // pixels between a tick and its label, and between labels
constexpr double kLowestZPart = 0.1; // of the height, kept for the z axis
constexpr double kUprightSlant = 2;  // pixels
constexpr double kFlatSlope = 0.15;  // rise over run of an axis that lies flat
constexpr double kTinyLength = 0.5;  // pixels: an axis shorter than that is a point
constexpr Colour kTitleColour = kRed;

// Places of the frame in pixels, y downwards.
struct Layout {
    double originX = 0; // of (xmin, ymin, zmin)
    double originY = 0;
    double lengthX = 0;
    double heightZ = 0;
    double slantX = 0; // from the start to the end of the y axis
    double slantY = 0; // upwards
};

// What the stages of one drawing share.
struct Frame {
    DrawSurface& surface;
    const ViewData& data;
    const ViewParameters& parameters;
    const RunState& run;
    Colour colour;
    Frame3D settled;
    Axis x;
    Axis y;
    Axis z;
    Layout layout;
};

double Wide(float value) {
    return static_cast<double>(value);
}

void CheckRange(double min, double max, const char* description, const RunState& run) {
    if (min > max) {
        throw AppError(ErrorNumber::kDrawing, run.texts[Text::ScaleErrorSource] + "3D",
                       description);
    }
}

void ChooseAxes(Frame& frame) {
    SpaceExtents& e = frame.settled.extents;
    CheckRange(e.xmin, e.xmax, " Error Scale X.", frame.run);
    CheckRange(e.ymin, e.ymax, " Error Scale Y.", frame.run);
    CheckRange(e.zmin, e.zmax, " Error Scale Z.", frame.run);
    const char separator = frame.run.decimalSeparator;
    const auto xLimits = AxisRule::WidenNarrow({e.xmin, e.xmax});
    const auto yLimits = AxisRule::WidenEqualLabels({e.ymin, e.ymax}, kYFormat, separator);
    const auto zLimits = AxisRule::WidenEqualLabels({e.zmin, e.zmax}, kZFormat, separator);
    frame.x = AxisRule::AxisLimits(xLimits.min, xLimits.max);
    frame.y = AxisRule::AxisLimits(yLimits.min, yLimits.max);
    frame.z = AxisRule::AxisLimits(zLimits.min, zLimits.max);
    e = {frame.x.min, frame.x.max, frame.y.min, frame.y.max, frame.z.min, frame.z.max};
}

std::string Label(const Frame& frame, double value, const char* format) {
    return NumberText::FormatScreen(value, format, frame.run.decimalSeparator);
}

// The widest of the labels of an axis, pixels.
double LabelWidth(const Frame& frame, const Axis& axis, const char* format) {
    return std::max(frame.surface.TextWidth(Label(frame, axis.min, format)),
                    frame.surface.TextWidth(Label(frame, axis.max, format)));
}

// What the margins leave of the surface, pixels.
struct Room {
    double left;
    double bottom; // edges; the origin is at the top left
    double width;
    double height;
};

// Leaves the surface's font at the size of the labels.
Room FindRoom(const Frame& frame) {
    DrawSurface& surface = frame.surface;
    surface.SetScaleMode(ScaleUnit::Pixels);
    surface.SetFontName("MS Sans Serif");
    surface.SetFontBold(false);
    surface.SetFontSize(12);
    const double titleHeight = surface.TextHeight("H");
    surface.SetFontSize(8);
    const double lineHeight = surface.TextHeight("H");
    const double left =
        std::max(LabelWidth(frame, frame.z, kZFormat), LabelWidth(frame, frame.y, kYFormat)) +
        kTick + 2 * kLabelGap;
    const double right = std::max(LabelWidth(frame, frame.y, kYFormat) + kTick + 2 * kLabelGap,
                                  LabelWidth(frame, frame.x, kXFormat) / 2) +
                         surface.TextWidth("W");
    const double top = titleHeight + 2 * lineHeight;
    const double bottom = 2 * lineHeight + kTick + 2 * kLabelGap;
    const double width = surface.PixelWidth() - left - right;
    const double height = surface.PixelHeight() - top - bottom;
    if (!(width > 0) || !(height > 0)) {
        throw AppError(ErrorNumber::kDivisionByZero, kSource,
                       "The drawing area is too small for the axis labels.");
    }
    return {left, surface.PixelHeight() - bottom, width, height};
}

// The x axis and the slant of the y axis side by side in the room, the latter no higher than leaves
// some height for the z axis.
void FitAxes(Layout& layout, const Room& room, double alongX, double alongZ) {
    layout.lengthX = room.width / (1 + std::fabs(alongX));
    const double mostRise = room.height * (1 - kLowestZPart);
    if (std::fabs(alongZ) * layout.lengthX > mostRise) {
        layout.lengthX = mostRise / std::fabs(alongZ);
    }
    const double slantX = alongX * layout.lengthX;
    const double used = layout.lengthX + std::fabs(slantX);
    layout.originX = room.left + (room.width - used) / 2 + std::max(0.0, -slantX);
    layout.originY = room.bottom - std::max(0.0, -alongZ * layout.lengthX);
}

// Shares the room out between the three axes.
void ChooseLayout(Frame& frame) {
    const Room room = FindRoom(frame);
    float& rayx = frame.settled.rayx;
    rayx = std::min(rayx, kLongestYAxis);
    const double alfa = Wide(frame.parameters.alfa);
    const double alongX = Wide(rayx) * std::cos(alfa);
    const double alongZ = Wide(rayx) * std::sin(alfa);
    Layout& layout = frame.layout;
    if (const std::optional<HeldAxes>& held = frame.parameters.held) {
        layout.originX = held->originX;
        layout.originY = held->originY;
        layout.lengthX = held->lengthX;
    } else {
        FitAxes(layout, room, alongX, alongZ);
    }
    layout.slantX = alongX * layout.lengthX;
    layout.slantY = alongZ * layout.lengthX;
    const double roomAbove = layout.originY - (room.bottom - room.height);
    layout.heightZ = std::max(roomAbove - std::max(0.0, layout.slantY), room.height * kLowestZPart);
    frame.settled.roomWidth = room.width;
}

AxisScale ScaleOf(const Layout& layout, const Frame3D& settled) {
    const SpaceExtents& e = settled.extents;
    return {layout.originX, layout.originY, layout.lengthX / (e.xmax - e.xmin),
            Wide(settled.rayx) * layout.lengthX / (e.ymax - e.ymin),
            layout.heightZ / (e.zmax - e.zmin)};
}

void SetScale(Frame& frame) {
    const Layout& layout = frame.layout;
    const SpaceExtents& e = frame.settled.extents;
    frame.settled.scale = ScaleOf(layout, frame.settled);
    DrawSurface& surface = frame.surface;
    const double xUnit = (e.xmax - e.xmin) / layout.lengthX; // user units a pixel
    const double zUnit = (e.zmax - e.zmin) / layout.heightZ;
    const double leftEdge = e.xmin - layout.originX * xUnit;
    const double topEdge = e.zmin + layout.originY * zUnit;
    surface.SetAutoRedraw(true);
    surface.Scale(leftEdge, topEdge, leftEdge + surface.PixelWidth() * xUnit,
                  topEdge - surface.PixelHeight() * zUnit);
    surface.SetScaleMode(ScaleUnit::Pixels);
    surface.SetDrawWidth(1);
    surface.SetDrawMode(DrawModes::kCopy);
    surface.SetDrawStyle(DrawStyles::kSolid);
    surface.Line(0, 0, surface.PixelWidth(), surface.PixelHeight(), surface.BackColor(),
                 Box::Filled);
}

// A pixel on the plane of zmin: parts of the x axis and of the y axis.
PixelPosition OnBase(const Frame& frame, double partX, double partY) {
    const Layout& layout = frame.layout;
    return {layout.originX + partX * layout.lengthX + partY * layout.slantX,
            layout.originY - partY * layout.slantY};
}

void Stroke(const Frame& frame, PixelPosition a, PixelPosition b) {
    frame.surface.Line(a.x, a.y, b.x, b.y, frame.colour);
}

void DrawBox(const Frame& frame) {
    DrawSurface& surface = frame.surface;
    surface.SetDrawStyle(DrawStyles::kDot);
    Stroke(frame, OnBase(frame, 1, 0), OnBase(frame, 1, 1));
    Stroke(frame, OnBase(frame, 0, 1), OnBase(frame, 1, 1));
    surface.SetDrawStyle(DrawStyles::kSolid);
    Stroke(frame, OnBase(frame, 0, 0), OnBase(frame, 1, 0));
    Stroke(frame, OnBase(frame, 0, 0), OnBase(frame, 0, 1));
    const PixelPosition origin = OnBase(frame, 0, 0);
    Stroke(frame, origin, {origin.x, origin.y - frame.layout.heightZ});
}

// Rectangle of a label, pixels.
struct Place {
    double left;
    double top;
    double right;
    double bottom;

    [[nodiscard]] bool Touches(const Place& other) const {
        return left < other.right + kLabelGap && other.left < right + kLabelGap &&
               top < other.bottom && other.top < bottom;
    }
};

// Prints the labels of all axes, each unless it would touch one printed before.
class LabelPrinter {
public:
    explicit LabelPrinter(DrawSurface& surface) : surface_(surface) {}

    /// @param alignX  part of the width that lies left of x; alignY the same of the height above y.
    void Print(const std::string& text, double x, double y, double alignX, double alignY) {
        const double width = surface_.TextWidth(text);
        const double height = surface_.TextHeight(text);
        const double left = x - alignX * width;
        const double top = y - alignY * height;
        const Place place{left, top, left + width, top + height};
        if (std::any_of(taken_.begin(), taken_.end(),
                        [&place](const Place& other) { return place.Touches(other); })) {
            return;
        }
        taken_.push_back(place);
        surface_.SetCurrentX(left);
        surface_.SetCurrentY(top);
        surface_.Print(text, NewLine::No);
    }

private:
    DrawSurface& surface_;
    std::vector<Place> taken_;
};

// Counted, since adding up the steps ends too early at large coordinates.
std::vector<double> TicksOf(const Axis& axis) {
    const int steps =
        std::min(RoundHalfEven((axis.max - axis.min) / axis.step), AxisRule::kMaxTicks - 1);
    std::vector<double> ticks;
    for (int k = 0; k <= steps; ++k) {
        ticks.push_back(axis.min + k * axis.step);
    }
    return ticks;
}

double PartOf(const Axis& axis, double value) {
    return (value - axis.min) / (axis.max - axis.min);
}

void DrawXTicks(const Frame& frame, LabelPrinter& printer) {
    for (const double tick : TicksOf(frame.x)) {
        const PixelPosition at = OnBase(frame, PartOf(frame.x, tick), 0);
        Stroke(frame, at, {at.x, at.y + kTick});
        printer.Print(Label(frame, tick, kXFormat), at.x, at.y + kTick + kLabelGap, 0.5, 0);
    }
    const PixelPosition end = OnBase(frame, 1, 0);
    const double line = frame.surface.TextHeight("x");
    printer.Print("x", end.x, end.y + kTick + kLabelGap + line, 0.5, 0);
}

// Where the labels of the y axis stand from their ticks: below an axis that lies flat, else to the
// right of it, or to the left of one that is upright or leans left, away from the data.
struct Beside {
    double x;
    double y;
    double alignX;
    double alignY;
};

Beside PlaceBesideYAxis(const Layout& layout) {
    if (std::fabs(layout.slantY) < kFlatSlope * std::fabs(layout.slantX)) {
        return {0, 1, 0.5, 0};
    }
    return layout.slantX < kUprightSlant ? Beside{-1, 0, 1, 0.5} : Beside{1, 0, 0, 0.5};
}

void DrawYTicks(const Frame& frame, LabelPrinter& printer) {
    if (std::hypot(frame.layout.slantX, frame.layout.slantY) < kTinyLength) {
        return;
    }
    const Beside side = PlaceBesideYAxis(frame.layout);
    for (const double tick : TicksOf(frame.y)) {
        const PixelPosition at = OnBase(frame, 0, PartOf(frame.y, tick));
        Stroke(frame, at, {at.x + side.x * kTick, at.y + side.y * kTick});
        printer.Print(Label(frame, tick, kYFormat), at.x + side.x * (kTick + kLabelGap),
                      at.y + side.y * (kTick + kLabelGap), side.alignX, side.alignY);
    }
    const PixelPosition end = OnBase(frame, 0, 1);
    printer.Print("y", end.x, end.y - kLabelGap, 0.5, 1);
}

void DrawZTicks(const Frame& frame, LabelPrinter& printer) {
    const PixelPosition origin = OnBase(frame, 0, 0);
    for (const double tick : TicksOf(frame.z)) {
        const double y = origin.y - PartOf(frame.z, tick) * frame.layout.heightZ;
        Stroke(frame, {origin.x, y}, {origin.x - kTick, y});
        printer.Print(Label(frame, tick, kZFormat), origin.x - kTick - kLabelGap, y, 1, 0.5);
    }
    const double top = origin.y - frame.layout.heightZ;
    const double half = frame.surface.TextHeight("z") / 2;
    printer.Print(frame.data.zLabel, origin.x - kTick, top - half - kLabelGap, 0.5, 1);
}

void PrintTitle(const Frame& frame) {
    const std::string& title = frame.data.title;
    if (title.empty()) {
        return;
    }
    DrawSurface& surface = frame.surface;
    surface.SetFontSize(12);
    surface.SetFontBold(true);
    surface.SetForeColor(kTitleColour);
    const double width = surface.TextWidth(title);
    const double room = surface.PixelWidth();
    const bool fits = width <= room;
    surface.SetCurrentX(fits ? (room - width) / 2 : 0);
    surface.SetCurrentY(0);
    surface.Print(
        fits ? title : PlotFrame::ShortenedTitle(title, width, surface.TextWidth(" . . . ."), room),
        NewLine::Yes);
    surface.SetFontBold(false);
    surface.SetFontSize(8);
}

void DrawStages(Frame& frame) {
    ChooseAxes(frame);
    ChooseLayout(frame);
    SetScale(frame);
    frame.surface.SetForeColor(frame.colour);
    DrawBox(frame);
    LabelPrinter printer(frame.surface);
    DrawXTicks(frame, printer);
    DrawYTicks(frame, printer);
    DrawZTicks(frame, printer);
    PrintTitle(frame);
    frame.surface.SetScaleMode(ScaleUnit::User);
}

} // namespace

PixelCoefficients Frame3D::Coefficients() const {
    const auto single = [](double value) { return static_cast<float>(value); };
    return {single(scale.perX),  single(scale.originX - scale.perX * extents.xmin),
            single(scale.perY),  single(-scale.perY * extents.ymin),
            single(-scale.perZ), single(scale.originY + scale.perZ * extents.zmin)};
}

std::variant<Frame3D, Message> DrawFrame3D(DrawSurface& surface, const ViewData& data,
                                           const ViewParameters& parameters, Colour colour,
                                           const RunState& run) {
    Frame frame{surface, data, parameters, run, colour, {data.extents, parameters.rayx, {}, 0},
                {},      {},   {},         {}};
    const auto failureOf = [&](const std::string& description, const std::string& source) {
        surface.SetScaleMode(ScaleUnit::User);
        return Message{description, run.texts[Text::ViewErrorTitle] + source + "3D"};
    };
    try {
        DrawStages(frame);
        return frame.settled;
    } catch (const AppError& error) {
        return failureOf(error.what(), error.source());
    } catch (const std::exception& error) {
        return failureOf(error.what(), kSource);
    }
}

} // namespace terravo
