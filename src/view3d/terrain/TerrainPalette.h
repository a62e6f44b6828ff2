// The colours of a terrain.
//
// Data: 256 colours and what they stand for. Method: by height those of a sheet's bands; by slope
// from level to upright; by aspect once round the compass, north first; plain is one colour.
#pragma once

#include "plot2d/Colour.h"
#include "view3d/terrain/TerrainMesh.h"
#include "view3d/terrain/TerrainPlan.h"

#include <array>

namespace terravo {

inline constexpr std::size_t kTerrainColours = 256;
using TerrainPalette = std::array<Colour, kTerrainColours>;

TerrainPalette MakeTerrainPalette(const TerrainPlan& plan);

/// The slope at the end of the palette, degrees.
inline constexpr double kSteepest = 60;

} // namespace terravo
