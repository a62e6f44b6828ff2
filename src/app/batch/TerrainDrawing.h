// The picture of the terrain that terravo-batch writes.
//
// Data: the call, the surface with its contours. Method: drawn by OpenGL without a window, then the
// legend and the values are painted over it.
#pragma once

#include "app/batch/TerrainOptions.h"
#include "app/session/SurveyContours.h"
#include "util/RunState.h"

#include <QImage>

namespace terravo {

/// What a summary tells of the picture.
struct TerrainFigures {
    double azimuth = 0; // degrees
    double elevation = 0;
    double exaggeration = 1;
    int width = 0; // pixels
    int height = 0;
};

struct TerrainDrawing {
    QImage picture;
    TerrainFigures figures;
};

/// @param contours  prepared by a rule, or without levels.
/// Throws AppError kDrawing with a sentence where there is no OpenGL 3.3.
TerrainDrawing DrawTerrain(const TerrainCall& call, const SurveyContours& contours,
                           const LevelRule& rule, int width, int height, const RunState& run);

} // namespace terravo
