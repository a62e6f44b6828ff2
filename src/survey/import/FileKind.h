// Files that are no text of points, told by their first bytes.
//
// Data: the head of a file. Method: the marks by which formats are known; where there is none, a
// text holds no zero bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace terravo {

/// What a file is that cannot be read as points, and what to do with it: one sentence without the
/// name of the file and without a full stop. Nothing for a text that may hold points.
/// @param head     its first bytes.
/// @param isUtf16  zero bytes belong to its characters.
std::optional<std::string> ForeignFormatOf(std::string_view head, bool isUtf16);

/// Whether these are the first bytes of a drawing (DXF), a GeoPackage, a Shapefile, a GeoJSON or
/// KML file or a raster of heights, which are no texts of points but can be read in another way.
bool IsGisFormat(std::string_view head);

} // namespace terravo
