// A surface as graphics draw it: places, normals and triangles of single precision.
//
// Data: a vertex for every corner, relative to the middle of the terrain, with the normal of the
// ground about it; three vertices a triangle. Method: differences are taken in double precision
// before they are rounded. A coarse mesh for a picture in motion takes one corner for every cell of
// a table over the plan: the one whose height stands out most, so that a wrong point stays in
// sight.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"
#include "view3d/terrain/TerrainCamera.h"

#include <array>
#include <cstdint>
#include <vector>

namespace terravo {

struct TerrainVertex {
    float x = 0;
    float y = 0;
    float z = 0;
    std::array<std::int8_t, 4> normal{0, 0, 127, 0}; // of 127, pointing up; not stretched
};

/// What all that is drawn of a terrain is relative to.
struct TerrainFrame {
    SpacePoint middle; // data units, exact or not: only differences matter
    TerrainReach reach;
    double lowest = 0; // data units
    double highest = 0;

    [[nodiscard]] SpacePoint Local(const SpacePoint& place) const {
        return {place.x - middle.x, place.y - middle.y, place.z - middle.z};
    }
};

/// Of what is visible of the points, which is what their bounds are.
TerrainFrame FrameOf(const PointSet& points);

struct TerrainMesh {
    std::vector<TerrainVertex> vertices; // vertex i - 1 is point i
    std::vector<std::uint32_t> corners;  // three a triangle, counter-clockwise from above
    std::vector<Index> atRim;            // triangles with a side at the rim, from 1, ascending
};

/// All normals point up, until they are added.
TerrainMesh MakeTerrainMesh(const TerrainFrame& frame, const PointSet& points,
                            const TriangleList& triangles);

/// The normal of each vertex is the mean of those of its triangles, by their areas.
void AddNormals(const TerrainFrame& frame, TerrainMesh& mesh);

/// Below so many triangles a mesh is drawn whole even in motion.
inline constexpr std::size_t kTrianglesInMotion = 60000;

/// The corners of a mesh of at most about kTrianglesInMotion triangles over the same vertices.
/// @param mesh  with more of them.
std::vector<std::uint32_t> CoarseCorners(const TerrainFrame& frame, const TerrainMesh& mesh);

/// The sides of the triangles, two vertices each, every side once.
std::vector<std::uint32_t> SidesOf(const TriangleList& triangles);

} // namespace terravo
