// How a terrain is to look.
//
// Data: plain values that a window changes and a command line gives. Method: none of its own.
#pragma once

#include "triangulation/TriangleList.h"

#include <string>

namespace terravo {

enum class TerrainColouring : unsigned char { Height, Slope, Aspect, Plain };

struct TerrainPlan {
    TerrainColouring colouring = TerrainColouring::Height;
    std::string theme = "height"; // of a sheet: the colours of heights
    bool smooth = true;           // else every triangle is flat
    bool triangles = false;       // their sides
    bool contours = true;
    bool points = false;
    bool lines = true;          // breaklines and rings
    bool plate = true;          // below the ground, with its coordinates
    bool legend = true;         // with the arrow to the north and the factor of heights
    bool dark = false;          // the background
    double lightAzimuth = 315;  // degrees, clockwise from north: where the light comes from
    double lightElevation = 45; // degrees above the ground

    bool operator==(const TerrainPlan&) const = default;
};

} // namespace terravo
