// Triangles out of the faces of an overlay.
//
// Data: faces that share corners by name. Method: each piece of the overlay numbers its own
// corners, the pieces are joined in their order; faces are fanned, and triangles linked across
// equal sides.
#pragma once

#include "analysis/SurfaceOverlay.h"

namespace terravo {

/// What the height of a corner is.
enum class FaceHeight { First, SecondLessFirst };

/// The common ground of two surfaces as a surface of its own.
/// @param first, second  measured from one origin.
/// @param stop           stage "measure"; no triangles when it was stopped.
MeasuredSurface MeshOfFaces(const MeasuredSurface& first, const MeasuredSurface& second,
                            FaceHeight height, const StopToken& stop);

} // namespace terravo
