// Writes DXF drawings.
//
// Data: content; a file. Method: what has to be known first is computed in one pass over the
// content, then head, entities and tail are written in a second one.
#pragma once

#include "export/vector/DxfLayers.h"

namespace terravo {

/// Writes the parts of the content that DXF knows, which are DxfParts. See VectorWriter.
void WriteDxf(OutputFile& out, const VectorContent& content, const VectorOptions& options,
              std::vector<std::string>& remarks);

} // namespace terravo
