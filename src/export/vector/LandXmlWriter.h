// Writes LandXML 1.2: a triangulated surface, its points, and the lines that it was made with.
//
// Data: vector content; coordinates stand as northing, easting, height. Method: one pass through a
// buffered file, one element a line. The date that the format asks for is always the same, so that
// the same content gives the same bytes. Bytes: docs/formats.md.
#pragma once

#include "export/vector/VectorFormat.h"

#include <string>
#include <vector>

namespace terravo {

/// What LandXML can hold.
VectorParts LandXmlParts();

/// What is written where nothing is chosen: all but the contours, which readers make themselves.
VectorParts UsualLandXmlParts();

/// Writes the parts that LandXML knows.
/// @param remarks  gets a sentence for each name that had to be changed.
/// Throws AppError for content without anything that the format holds, for a surface without
/// triangles, for lines of fewer than two vertices, for numbers that are not finite, and when the
/// file cannot be written.
void WriteLandXml(OutputFile& out, const VectorContent& content, const VectorOptions& options,
                  std::vector<std::string>& remarks);

} // namespace terravo
