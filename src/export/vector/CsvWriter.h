// Writes tables of points, contour vertices and triangles.
//
// Data: content; a file of fields with commas between them, one record a line, names of the columns
// on the first. Method: texts that a reader could take for something else stand between quotes,
// with quotes inside doubled; no text is changed, not even one that a spreadsheet takes for a
// formula.
#pragma once

#include "export/vector/VectorFormat.h"

namespace terravo {

/// What each table holds; numbers and codes are never left out.
VectorParts CsvPointParts();
VectorParts CsvContourParts();
VectorParts CsvTriangleParts();

/// Columns number, easting, northing, height, code: the number is the name of the point where it
/// has one. See VectorWriter, as for the others.
void WriteCsvPoints(OutputFile& out, const VectorContent& content, const VectorOptions& options,
                    std::vector<std::string>& remarks);

/// Columns level, line, closed, easting, northing, a vertex a record: lines count from 1, closed is
/// 1 or 0, and a closed line does not repeat its first vertex. Where the content is not to have all
/// contours, only the index ones.
void WriteCsvContours(OutputFile& out, const VectorContent& content, const VectorOptions& options,
                      std::vector<std::string>& remarks);

/// Columns point1, point2, point3: corners counter-clockwise, by the place of the point in the
/// table of points, from 1.
void WriteCsvTriangles(OutputFile& out, const VectorContent& content, const VectorOptions& options,
                       std::vector<std::string>& remarks);

} // namespace terravo
