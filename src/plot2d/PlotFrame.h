// The frame of a plan view: clears the drawing area, gives it user coordinates from the extents of
// the data and draws grid, tick labels, axes with arrowheads and titles.
//
// Data: the extents and texts of one picture in a PlotFrameRequest; the limits and pixel sizes that
// came out in a PlotFrameResult. Method: round the axes (AxisRule), measure the margins in pixels,
// turn them into user units, then draw stage by stage. The x and y scales are independent: the data
// rectangle fills the area and its aspect ratio is not kept.
#pragma once

#include "plot2d/AxisRule.h"
#include "plot2d/Colour.h"
#include "plot2d/DrawSurface.h"
#include "util/RunState.h"
#include "util/Services.h"

#include <optional>
#include <string>
#include <string_view>

namespace terravo::PlotFrame {

struct PlotFrameRequest {
    double xMin = 0; ///< extents of the data, data units
    double xMax = 0;
    double yMin = 0;
    double yMax = 0;
    std::string xLabelFormat = "#0.0##"; ///< patterns of NumberText::FormatScreen
    std::string yLabelFormat = "#0.0##";
    int pixelCount = 1; ///< pixels that xPixelSize and yPixelSize measure
    std::string title;
    std::string xTitle;
    std::string yTitle;
    bool autoRedrawAfter = true; ///< AutoRedraw that the surface is left with
    Colour axisColour = kGreen;
    bool drawAxes = true; ///< false: scale and clear only
};

/// Fields are filled as far as the drawing came.
struct PlotFrameResult {
    std::optional<Message> failure; ///< none: the frame is complete
    float xPixelSize = 0;           ///< user units of pixelCount pixels, not negative
    float yPixelSize = 0;
    float xMinUsed = 0; ///< rounded limits of the axes
    float xMaxUsed = 0;
    float yMinUsed = 0;
    float yMaxUsed = 0;
    float elapsed = 0; ///< seconds
};

/// Room around the data rectangle, pixels.
struct Margins {
    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;
};

/// Edges of the drawing area, user units.
struct FrameScale {
    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;
};

/// The room that tick labels and titles need. Leaves the surface's font at 12 points, not bold, and
/// its ScaleMode as it was.
Margins FrameMargins(DrawSurface& surface, const AxisRule::Axis& xAxis, const AxisRule::Axis& yAxis,
                     const PlotFrameRequest& request, char separator);

/// The edges that put the axes inside the margins. The horizontal margins are taken off the width;
/// the vertical ones are added to the height, so they come out smaller than asked for.
/// @param pixelWidth, pixelHeight  size of the drawing area.
/// @throws AppError when the margins leave no width.
FrameScale ChooseFrameScale(const AxisRule::Axis& xAxis, const AxisRule::Axis& yAxis,
                            const Margins& margins, double pixelWidth, double pixelHeight);

/// The title cut to its first characters plus " . . . ." such that it fits; characters are counted
/// by their even share of the width.
/// @param textWidth, markWidth, room  widths of the title, of " . . . ." and of the area.
std::string ShortenedTitle(std::string_view title, double textWidth, double markWidth, double room);

/// Draws the frame and leaves the surface in user coordinates with y upwards. After a fault
/// (reversed extents, coordinates out of range, an area too narrow) found before anything is drawn,
/// the surface keeps its scale.
/// @param run  texts kScaleErrorSource and kErrorTitle, and the decimal separator.
PlotFrameResult DrawPlotFrame(DrawSurface& surface, const PlotFrameRequest& request,
                              const RunState& run, const ClockService& clock);

} // namespace terravo::PlotFrame
