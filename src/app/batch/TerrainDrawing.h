// The picture of the terrain that terravo-batch writes.
//
// Data: the call, the terrain and its triangles. Method: drawn by OpenGL without a window, then the
// legend and the values are painted over it.
#pragma once

#include "app/batch/TerrainOptions.h"
#include "util/RunState.h"
#include "view3d/terrain/TerrainContent.h"

#include <QImage>

#include <cstdint>

namespace terravo {

/// What a summary tells of the picture.
struct TerrainFigures {
    double azimuth = 0; // degrees
    double elevation = 0;
    double exaggeration = 1;
    int width = 0; // pixels
    int height = 0;
    std::int64_t segments = 0; // straight pieces of contours
};

struct TerrainDrawing {
    QImage picture;
    TerrainFigures figures;
};

/// Throws AppError kDrawing with a sentence where there is no OpenGL 3.3.
TerrainDrawing DrawTerrain(const TerrainCall& call, const TerrainContent& content,
                           const TriangleList& triangles, int width, int height,
                           const RunState& run);

} // namespace terravo
