// The surface of a LandXML file: the lines that it was made with, its points and faces.
//
// Data: vector content. Method: what lies where is not asked; the writer of the file has made sure
// that the content fits.
#pragma once

#include "export/vector/VectorContent.h"
#include "util/OutputFile.h"

namespace terravo {

/// Whether lines are to be written: hull, boundaries, breaklines or contours that are there.
bool HasLandXmlLines(const VectorContent& content);

/// Writes the lines. Only where there are any. Throws AppError.
void WriteLandXmlLines(OutputFile& out, const VectorContent& content);

/// Writes the points that triangles use, and the triangles. Throws AppError.
/// @param content  has a triangle at least.
void WriteLandXmlFaces(OutputFile& out, const VectorContent& content);

} // namespace terravo
