// Writes GeoJSON: a collection of features, one a line.
//
// Data: vector content; every position has easting, northing and height. Method: the box of all
// that is written is taken from the content first, since it stands at the top; then one pass
// through a buffered file. The coordinate system is named in a member that desktop programs honour
// and web maps do not; what a reader will make of the file is told. Bytes: docs/formats.md.
#pragma once

#include "export/vector/VectorFormat.h"

#include <string>
#include <vector>

namespace terravo {

/// What GeoJSON can hold.
VectorParts GeoJsonParts();

/// What is written where nothing is chosen; triangles make files that browsers cannot show.
VectorParts UsualGeoJsonParts();

/// Writes the parts that GeoJSON knows; a collection without features where there is nothing.
/// @param remarks  gets what readers will take the coordinates for.
/// Throws AppError for lines of fewer than two vertices, for numbers that are not finite, and when
/// the file cannot be written.
void WriteGeoJson(OutputFile& out, const VectorContent& content, const VectorOptions& options,
                  std::vector<std::string>& remarks);

} // namespace terravo
