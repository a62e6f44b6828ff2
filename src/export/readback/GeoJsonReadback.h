// Reads a GeoJSON file back and compares it with what it was made from.
//
// Data: the file, in blocks of whole lines. Method: each block is taken apart as an array of
// features by a JSON library, so that files of any size need little memory; line by line they make
// the list in the file, since commas and brackets between the blocks are checked, too.
#pragma once

#include "export/vector/VectorFormat.h"

#include <optional>
#include <string>

namespace terravo {

/// Compares the features, the box of all positions, the coordinate system and the name.
/// @return the first difference as a sentence, nothing when there is none.
/// Throws AppError when the file cannot be read.
std::optional<std::string> CheckGeoJson(const std::string& path, const VectorContent& content,
                                        const VectorOptions& options);

} // namespace terravo
