// The frame of the axonometric picture: rounded ranges, scale, axes with ticks and labels, title.
//
// Data: the extents and texts of the data, the length and slant of the y axis; the widened extents
// and the places of the axes come out. Method: ranges are rounded as those of the plan frame; the x
// axis gets the length that leaves room for the slanted y axis, the z axis the height above it,
// unless a drag holds the x axis; then ticks are drawn along each axis. A label that would touch
// the one before it is left out, since an axis may be as short as a pixel. x runs to the right, z
// upwards, y along a slanted axis.
#pragma once

#include "plot2d/DrawSurface.h"
#include "util/RunState.h"
#include "util/Services.h"
#include "view3d/ViewData.h"
#include "view3d/ViewParameters.h"

#include <variant>

namespace terravo {

/// Longest y axis, in lengths of the x axis.
inline constexpr float kLongestYAxis = 1000;

/// Where the axes lie. Places are projected relative to the start of the axes: products with the
/// coordinates of a national grid would leave a small site no digits.
struct AxisScale {
    double originX = 0; ///< pixel of (xmin, ymin, zmin)
    double originY = 0;
    double perX = 0; ///< pixels a unit of x, to the right
    double perY = 0; ///< of y, along the slanted axis
    double perZ = 0; ///< of z, upwards
};

/// The same in single precision, relative to the origin of the coordinates. Pixel x of x on the x
/// axis is Ax x + Bx; Ay y + By is the distance along the slanted axis from ymin, pixels; pixel y
/// of z is Az z + Bz, with Az negative.
struct PixelCoefficients {
    float Ax = 0;
    float Bx = 0;
    float Ay = 0;
    float By = 0;
    float Az = 0;
    float Bz = 0;
};

/// What a frame has settled.
struct Frame3D {
    SpaceExtents extents; ///< of the data, widened to whole tick steps
    float rayx = 1;       ///< of the parameters, at most kLongestYAxis
    AxisScale scale;
    double roomWidth = 0; ///< that the margins leave for the axes, pixels; in every view the same

    [[nodiscard]] PixelCoefficients Coefficients() const;
    /// Length of the drawn x axis, pixels.
    [[nodiscard]] double LengthX() const { return (extents.xmax - extents.xmin) * scale.perX; }
};

/// Clears the surface, sets its user scale (x to the right, z upwards) and draws the frame.
/// @return the frame; or what to tell the user (reversed extents, a surface too small for the
///         labels, coordinates out of range), the picture then stays as far as it was drawn.
std::variant<Frame3D, Message> DrawFrame3D(DrawSurface& surface, const ViewData& data,
                                           const ViewParameters& parameters, Colour colour,
                                           const RunState& run);

} // namespace terravo
