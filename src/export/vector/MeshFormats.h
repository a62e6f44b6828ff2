// Writes the triangles for programs that show, change or print bodies: OBJ, PLY, STL.
//
// Data: a MeshFrame; x goes east, y north, z up, one is one unit of the survey. Method: each file
// says where the origin lies wherever it can hold a comment.
#pragma once

#include "export/vector/VectorFormat.h"

namespace terravo {

VectorParts MeshParts();

/// Text, coordinates to a billionth of a unit. See VectorWriter, as for the others; the remarks
/// name the origin. All of them throw AppError where there are no triangles.
void WriteObj(OutputFile& out, const VectorContent& content, const VectorOptions& options,
              std::vector<std::string>& remarks);

/// Binary, little-endian; coordinates in single precision where that keeps millimetres, else in
/// double precision.
void WritePly(OutputFile& out, const VectorContent& content, const VectorOptions& options,
              std::vector<std::string>& remarks);

/// Binary, in single precision; where that does not keep millimetres the remarks tell. Throws
/// AppError for more triangles than the format counts.
void WriteStl(OutputFile& out, const VectorContent& content, const VectorOptions& options,
              std::vector<std::string>& remarks);

} // namespace terravo
