// Breaklines and rings out of files of any kind.
//
// Data: a text of lines, or a source that goes through the library terravo_gis. Method: the first
// bytes tell which; of a source all layers with lines or polygons are taken unless some are named.
#pragma once

#include "gis/GisPlan.h"
#include "survey/surface/LineFile.h"

#include <string>

namespace terravo {

/// Reads lines and the rings of polygons. Those of a layer whose heights are all 0, and which has
/// no attribute named as a height, come without heights. Points are left out.
/// @param plan  of a source: the layers, the attribute of the heights, the system to project to;
///              degrees that are not projected are a failure. A text has no layers.
LineReading ReadSurfaceLines(const std::string& path, LineClosing closing, const GisPlan& plan = {},
                             const StopToken& stop = StopToken());

} // namespace terravo
