// All that is drawn of a terrain, ready for graphics.
//
// Data: the mesh, its coarse mesh, segments of lines with their colour and width, the survey points
// among the vertices. Method: made once for a surface and its contours; plan and camera only choose
// from it.
#pragma once

#include "contour/ContourSet.h"
#include "plot2d/Colour.h"
#include "survey/Survey.h"
#include "view3d/terrain/TerrainMesh.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace terravo {

struct TerrainSegment {
    std::array<float, 3> from{};
    std::array<float, 3> to{};
    /// Of a contour: the way to the next line as heavy, in plan and upwards, as it is about here. 0
    /// of all other lines.
    std::array<float, 2> uphill{};
    float rise = 0;
};

enum class TerrainLine : unsigned char { Contour, IndexContour, Breakline, Rim };
inline constexpr std::size_t kTerrainLines = 4;

struct TerrainContent {
    TerrainFrame frame;
    TerrainMesh mesh;
    std::vector<std::uint32_t> coarse; // corners; empty: the mesh is drawn whole in motion too
    std::vector<std::uint32_t> points; // vertices that are survey points of a visible triangle
    double usualSide = 0;              // about the length of the triangles' sides, in plan
    std::array<std::vector<TerrainSegment>, kTerrainLines> lines;

    [[nodiscard]] const std::vector<TerrainSegment>& Lines(TerrainLine kind) const {
        return lines[static_cast<std::size_t>(kind)];
    }
};

/// The lines of the levels, as a terrain shows them.
struct TerrainContours {
    const ContourSet& set; // of the surface, may be empty
    std::function<bool(Index level)> isIndex;
    /// Curves made straight, which leave their height a little: they lie on the triangles.
    bool areSmooth = false;
};

/// @param surface  with triangles.
TerrainContent MakeTerrainContent(const ShownSurface& surface, const TerrainContours& contours);

/// How far the straight pieces of smooth lines may be from their curves on a terrain, data units.
double ContourTolerance(const PointSet& points, Index triangles);

/// Above so many triangles their sides are too short to be seen as corners of the contours.
inline constexpr Index kMostSmoothed = 200000;

} // namespace terravo
