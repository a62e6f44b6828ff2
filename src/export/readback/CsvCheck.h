// Reads tables of points, contour vertices and triangles back.
//
// Data: a file and the content that it was made from. Method: record by record; a contour is told
// when the number of the line changes.
#pragma once

#include "export/vector/VectorFormat.h"

namespace terravo {

/// See VectorCheck, as for the others.
std::optional<std::string> CheckCsvPoints(const std::string& path, const VectorContent& content,
                                          const VectorOptions& options);
std::optional<std::string> CheckCsvContours(const std::string& path, const VectorContent& content,
                                            const VectorOptions& options);
std::optional<std::string> CheckCsvTriangles(const std::string& path, const VectorContent& content,
                                             const VectorOptions& options);

} // namespace terravo
