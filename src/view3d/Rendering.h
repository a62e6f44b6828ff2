// The picture of an axonometric view: frame, data marks, rotation marker.
//
// Data: what is shown and how; the drawing surface. Method: every place is projected first; marks
// are painted in an order that lets nearer ones cover farther ones.
#pragma once

#include "plot2d/DrawSurface.h"
#include "util/RunState.h"
#include "util/Services.h"
#include "view3d/Projection.h"
#include "view3d/ViewData.h"
#include "view3d/ViewParameters.h"

#include <variant>

namespace terravo {

/// What a drawing leaves behind.
struct Drawing3D {
    Projection projection;
    Array1<PixelPoint> screenPoint; ///< of the points; of the nodes of a grid, row by row in i
};

namespace Rendering {

/// Draws the whole picture.
/// @param kept  of an earlier drawing, for a turn or another colour; null measures the frame anew.
/// @return the drawing; or the message of a frame that failed, no marks are drawn then.
std::variant<Drawing3D, Message> Redraw(DrawSurface& surface, const ViewData& data,
                                        const ViewParameters& parameters, const FrameMeasures* kept,
                                        const RunState& run);

} // namespace Rendering
} // namespace terravo
