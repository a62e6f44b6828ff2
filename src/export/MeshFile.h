// The exchange file of triangles and points, "point_qrw.txt": written after a triangulation, read
// by the export of triangles.
//
// Data: the triangle list and the points in file order. Method: printed numbers, CR LF lines: the
// triangle count, the three point numbers of each triangle, "----", the point count, the three
// coordinates of each point. An export reads this file, not the memory.
#pragma once

#include "contour/TriangleCut.h"
#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"
#include "util/OutputFile.h"

#include <array>
#include <string>
#include <vector>

namespace terravo {

/// Name of the file in the work folder.
inline constexpr const char* kMeshFileName = "point_qrw.txt";

/// What the file holds.
struct MeshContents {
    std::vector<std::array<Index, 3>> triangles; // 1-based numbers of points that there are
    Array1<SpacePoint> points;
};

/// Writes the file, replacing an old one only when the new one is complete. Throws AppError.
void WriteMeshFile(const OutputTarget& target, const PointSet& points,
                   const TriangleList& triangles);

/// Reads the file. Throws AppError when it cannot be read, when a line is missing or no number, and
/// when a triangle has a corner that is no point.
MeshContents ReadMeshFile(const std::string& path);

} // namespace terravo
