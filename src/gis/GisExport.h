// GeoPackages and Shapefiles, written through the library terravo_gis.
//
// Data: vector content. Method: the library writes under other names in the same place; the files
// take their own when all are complete.
#pragma once

#include "export/vector/VectorContent.h"
#include "util/OutputFile.h"

#include <string>
#include <vector>

namespace terravo {

/// The parts that both formats hold. Numbers, codes and heights are columns of the points.
VectorParts GisParts();

/// Writes a GeoPackage in the place of a file that has just been begun and holds nothing.
/// Finishes the file; whoever began it commits it. Throws AppError.
void WriteGeoPackage(OutputFile& out, const VectorContent& content,
                     std::vector<std::string>& remarks);

/// Writes a GeoPackage whole or not at all, or with the rest of its group. Throws AppError.
void WriteGeoPackage(const OutputTarget& target, const VectorContent& content,
                     std::vector<std::string>& remarks);

/// Writes one set of files a kind of content, all or none: contours.shp, triangles.shp, ... Other
/// files of the folder stay, but not those that told of an older set of the same name.
/// @param folder  made where it is missing; its parent exists. With a group, its files appear with
///                the rest of that.
/// Throws AppError, also for content that makes a file of more than 2 GB.
void WriteShapefiles(const OutputTarget& folder, const VectorContent& content,
                     std::vector<std::string>& remarks);

/// Every file that WriteShapefiles may make, replace or remove in a folder.
std::vector<std::string> ShapefilePaths(const std::string& folder);

} // namespace terravo
