// What a ray of sight meets first.
//
// Data: boxes of eight triangles that follow each other in their list, of eight such boxes, and so
// on. Method: neighbours in the list are mostly neighbours on the ground; boxes are gone through
// from near to far, and left out where something nearer was met.
#pragma once

#include "view3d/terrain/TerrainMesh.h"

#include <optional>
#include <vector>

namespace terravo {

struct TerrainHit {
    Index triangle = 0; // number in the list
    SpacePoint place;   // relative to the frame
    double far = 0;     // eye + far * direction
};

class TerrainPick {
public:
    /// @param mesh  outlives this.
    explicit TerrainPick(const TerrainMesh& mesh);

    /// @param ray  relative to the frame.
    [[nodiscard]] std::optional<TerrainHit> FirstOn(const SightRay& ray) const;

private:
    struct Box {
        std::array<float, 3> low;
        std::array<float, 3> high;
    };

    static constexpr std::size_t kFan = 8;

    [[nodiscard]] Box BoxOf(std::size_t firstTriangle) const;

    const TerrainMesh& mesh_;
    std::vector<std::vector<Box>> rows_; // of eight triangles, of eight such boxes, ...
};

/// Of a triangle, degrees; 90 where it stands upright.
double SlopeOf(const TerrainMesh& mesh, Index triangle);

/// The survey point about a hit that is nearest to a pixel.
/// @param surveyed  points 1..surveyed are of the survey.
/// @param reach     pixels, as far as it may be.
/// @return its number in use, or 0.
Index PointNear(const TerrainCamera& camera, const TerrainMesh& mesh, const TriangleList& triangles,
                Index surveyed, const TerrainHit& hit, const PicturePlace& pixel, double reach);

} // namespace terravo
