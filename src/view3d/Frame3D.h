// The frame of the axonometric picture: rounded ranges, scale, axes with ticks and labels, title.
//
// Data: the working extents and the y axis of an AxonometricView, which the frame widens, caps and
// gives its pixel coefficients. Method: ranges are rounded as those of the plan frame; the x axis
// gets the length that leaves room for the slanted y axis, the z axis the height above it; then
// ticks are drawn along each axis. A label that would touch the one before it is left out, since an
// axis may be as short as a pixel.
#pragma once

#include "plot2d/DrawSurface.h"
#include "util/RunState.h"
#include "util/Services.h"
#include "view3d/AxonometricView.h"

namespace terravo {

/// Longest y axis, in lengths of the x axis.
inline constexpr float kLongestYAxis = 1000;

/// Clears the surface, sets its user scale (x to the right, z upwards) and draws the frame.
/// @param view  extents are widened to whole tick steps, rayx is capped, coefficients are filled.
/// @return false after one message (reversed extents, a surface too small for the labels,
/// coordinates
///         out of range); the picture stays as far as it was drawn.
bool DrawFrame3D(DrawSurface& surface, AxonometricView& view, Colour colour, const RunState& run,
                 MessageService& messages);

} // namespace terravo
