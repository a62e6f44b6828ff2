// Bands of a raster as points: the middles of its cells.
//
// Data: heights in rows and columns, and where they lie. Method: every so manieth row and column is
// read, from the middle of the first such square; cells without data are left out. A raster that
// lies nowhere, and a band of colours, is a picture.
#pragma once

#include "gis/module/SourceFile.h"

#include <vector>

namespace terravo {

/// Named "band 1" and so on.
std::vector<GisLayer> ListBands(const SourceFile& file);

/// Reads a band of that name. Throws AppError when there is none.
/// @return false when it was stopped.
bool ReadBand(const SourceFile& file, const GdalScope& gdal, const std::string& name, Index step,
              const StopToken& stop, GisContent& content);

} // namespace terravo
