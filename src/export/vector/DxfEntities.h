// The entities of a DXF file: contours, labels, triangles, points, their texts, lines in space.
//
// Data: the lists of the content, in their order. Method: each entity begins with the same groups
// around its handle, made once; the coordinates of a point are printed once and copied to the
// triangles around it.
#pragma once

#include "export/vector/DxfPlan.h"
#include "util/OutputFile.h"

#include <string>
#include <vector>

namespace terravo {

/// Writes all entities of the plan. Throws AppError for a coordinate that is not finite, and when
/// the file cannot be written.
/// @param remarks  gets a sentence for each text that is too long.
void WriteDxfEntities(OutputFile& out, const DxfPlan& plan, std::vector<std::string>& remarks);

} // namespace terravo
