// The plate beneath a terrain: its corners, the lines of its coordinates, and their values.
//
// Data: places relative to the terrain's middle; values at places of the picture. Method: the plate
// lies a little below the lowest ground and reaches a little beyond it; the values stand along the
// two edges that are nearest to the viewer, outside of them.
#pragma once

#include "view3d/terrain/TerrainCamera.h"
#include "view3d/terrain/TerrainContent.h"

#include <string>
#include <vector>

namespace terravo {

struct TerrainPlate {
    std::array<SpacePoint, 4> corners; // from the south-west, counter-clockwise
    std::vector<TerrainSegment> grid;
    std::vector<double> eastings; // of the lines, data units
    std::vector<double> northings;
    double spacing = 0;
};

/// @param exaggeration  heights are stretched by it; the plate's distance below the ground is not.
TerrainPlate MakeTerrainPlate(const TerrainFrame& frame, double exaggeration);

/// A text on the picture; its place is the middle of the side that faces the plate.
struct TerrainText {
    std::string text;
    double x = 0; // pixels
    double y = 0;
    double towardsX = 0; // the way from the plate, of length 1
    double towardsY = 0;
};

/// The values along the edges in front, those that would run into each other left out.
/// @param textHeight  pixels.
std::vector<TerrainText> TextsOfPlate(const TerrainPlate& plate, const TerrainFrame& frame,
                                      const TerrainCamera& camera, double textHeight,
                                      char decimalSeparator);

} // namespace terravo
