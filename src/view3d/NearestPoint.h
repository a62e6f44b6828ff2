// The read-out of the axonometric picture: which point or node is under the pointer.
//
// Data: what is shown and where the last drawing put it. Method: the smallest distance in pixels;
// ties and the preference for the front rows of a grid are those that the viewer expects.
#pragma once

#include "plot2d/PixelPoint.h"
#include "view3d/Rendering.h"
#include "view3d/ViewData.h"

#include <optional>

namespace terravo {

/// What the picture reads out at a place of the pointer.
struct NearestPoint {
    double x = 0;
    double y = 0;
    double z = 0; ///< in the data's own unit
    PixelPoint pixel;
    Index point = 0; ///< its number; 0 for a node of a grid
};

/// The point or node nearest to a pixel: of points equally near the one with the highest number, of
/// nodes the one in front, then the leftmost. Nothing when there are no points.
std::optional<NearestPoint> FindNearest(const ViewData& data, const Drawing3D& drawing,
                                        PixelPoint pixel);

} // namespace terravo
