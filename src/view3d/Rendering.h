// The picture of an axonometric view: frame, data marks, rotation marker.
//
// Data: the view; the drawing surface. Method: every place is projected first; marks are painted in
// an order that lets nearer ones cover farther ones.
#pragma once

#include "plot2d/DrawSurface.h"
#include "util/RunState.h"
#include "util/Services.h"
#include "view3d/AxonometricView.h"

namespace terravo::Rendering {

/// Draws the whole picture.
/// @param full    also renews what follows from the frame (sines, centre, slant): after new data,
/// another
///                view or a drag. A turn or another colour keeps them.
/// @param colour  false draws every mark grey.
/// @return false when the frame failed; it has shown a message, and no marks are drawn.
bool Redraw(DrawSurface& surface, AxonometricView& view, bool full, bool colour,
            const RunState& run, MessageService& messages);

/// The axis of rotation and the turned direction of x.
void DrawRotationMarker(DrawSurface& surface, const AxonometricView& view);

} // namespace terravo::Rendering
