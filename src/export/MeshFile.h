// The exchange file of triangles and points, "point_qrw.txt".
//
// Data: the triangle list and the points in file order. Method: printed numbers, CR LF lines: the
// triangle count, the three point numbers of each triangle, "----", the point count, the three
// coordinates of each point. The export of triangles reads this file, not the memory.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

#include <string>

namespace terravo {

/// Name of the file in the work folder.
inline constexpr const char* kMeshFileName = "point_qrw.txt";

/// Writes the file, replacing an old one only when the new one is complete. Throws AppError.
void WriteMeshFile(const std::string& path, const PointSet& points, const TriangleList& triangles);

} // namespace terravo
