// Coordinate systems as GDAL wants them.
//
// Data: codes of the EPSG register. Method: GDAL's own copy of it; x is always east, whatever order
// of the axes a system has.
#pragma once

#include <ogr_spatialref.h>

#include <optional>
#include <string>

namespace terravo {

/// The system of a code.
/// @param path  for the sentence. Throws AppError when the code is not known.
OGRSpatialReference SystemOf(int epsg, const std::string& path);

/// A plane system of which nothing is known.
OGRSpatialReference UndefinedPlaneSystem();

} // namespace terravo
