// How much the ground has risen or sunk between two surveys, as a surface.
//
// Data: two surfaces. Method: the common parts of their triangles, fanned: corners are the points
// of both and the crossings of their edges, each with the height of the second surface less that
// of the first. The difference is a plane over every triangle, so its contours are exact and the
// zero line is the border of cut and fill.
#pragma once

#include "analysis/MeasuredSurface.h"
#include "util/StopToken.h"

namespace terravo {

struct DifferenceSurface {
    PointSet points;        // data units; the height is the second less the first
    TriangleList triangles; // linked, with links along the rims; none where nothing is common
};

/// @param first, second  measured from one origin.
/// @param stop           stage "measure"; nothing comes of a work that was stopped.
DifferenceSurface MakeDifference(const MeasuredSurface& first, const MeasuredSurface& second,
                                 const StopToken& stop = StopToken());

} // namespace terravo
