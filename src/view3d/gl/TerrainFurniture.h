// What stands on the picture of a terrain and is not ground: values, legend, arrow, scale of
// heights.
//
// Data: plan, camera, frame; words in the user's language. Method: painted in pixels over the
// finished picture, in the program's own fonts; the same for a window and a file.
#pragma once

#include "util/TextCatalogue.h"
#include "view3d/terrain/TerrainContent.h"
#include "view3d/terrain/TerrainPlan.h"

#include <string_view>

class QPainter;

namespace terravo {

struct TerrainFurniture {
    const TerrainPlan& plan;
    const TerrainCamera& camera;
    const TerrainFrame& frame;
    const TextCatalogue& texts;
    char decimalSeparator = '.';
    std::string_view heightUnit = "m";
    int width = 0; // of the picture, in units of the painter
    int height = 0;
};

/// Height of a capital letter, units of the painter, on a picture of that height.
double TerrainTextHeight(int height);

void PaintTerrainFurniture(QPainter& painter, const TerrainFurniture& furniture);

} // namespace terravo
