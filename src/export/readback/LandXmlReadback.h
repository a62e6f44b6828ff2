// Reads a LandXML file back and compares it with what it was made from.
//
// Data: the file, element by element; the points of the surface by their numbers, since its faces
// name them. Method: an XML library tells the elements, but for lines of points and faces in their
// usual form. Each element must stand in the one that it belongs to; the corners of a face are
// compared by their places, and what the surface says of itself by what its faces give.
#pragma once

#include "export/vector/VectorFormat.h"

#include <optional>
#include <string>

namespace terravo {

/// Compares units, coordinate system, names, codes, points, faces and their neighbours, lines,
/// areas and heights.
/// @return the first difference as a sentence, nothing when there is none.
/// Throws AppError when the file cannot be read.
std::optional<std::string> CheckLandXml(const std::string& path, const VectorContent& content,
                                        const VectorOptions& options);

} // namespace terravo
