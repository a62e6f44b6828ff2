// The triangles of content as programs for pictures and printing want them: few digits, one list.
//
// Data: the corners that triangles have, by their own numbers, and the place that they are relative
// to. Method: coordinates of a national grid leave no millimetres in single precision, so whole
// units are taken off: the south-west corner rounded down. Heights stay as they are.
#pragma once

#include "export/vector/VectorContent.h"

#include <array>
#include <string>
#include <vector>

namespace terravo {

struct MeshFrame {
    double originX = 0; // whole data units
    double originY = 0;
    std::vector<SpacePoint> corners;             // relative to the origin
    std::vector<std::array<Index, 3>> triangles; // 1-based in corners, counter-clockwise

    /// Whether single precision moves no corner by more than half a millimetre.
    bool floatsKeepMillimetres = true;
    std::string unit; // "metre"

    /// "easting 4520000, northing 667000, height 0".
    [[nodiscard]] std::string Origin() const;
};

/// Takes the corners that triangles have, in the order of the points.
/// Throws AppError, with the path as source, where there is no triangle, and for a coordinate that
/// is no finite number.
MeshFrame MakeMeshFrame(const VectorContent& content, const std::string& path);

} // namespace terravo
