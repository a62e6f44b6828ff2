// Reads a DXF drawing back and compares it with its content.
//
// Data: the file, the content. Method: the entities must be those that were to be written, in their
// order, and nothing else; every group is read, every handle must be higher than the one before,
// every layer must be in the table. The reading ends at the first difference.
#pragma once

#include "export/vector/VectorFormat.h"

namespace terravo {

/// See VectorCheck.
std::optional<std::string> CheckDxf(const std::string& path, const VectorContent& content,
                                    const VectorOptions& options);

} // namespace terravo
