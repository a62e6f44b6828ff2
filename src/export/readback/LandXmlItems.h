// What stands in the long lists of a LandXML file: points, points of the surface, faces.
//
// Data: their numbers and texts. Method: a line of the usual form, which is the one that the
// program writes, is taken apart between its fixed pieces; any other one is left to the XML
// library, which needs several times as long.
#pragma once

#include "contour/TriangleCut.h"
#include "util/Array1.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace terravo::LandXmlItems {

struct Point {
    std::string name;
    std::string code;
    SpacePoint place;
};

struct SurfacePoint {
    std::size_t id = 0;
    SpacePoint place;
};

struct Face {
    std::array<Index, 3> neighbours{};
    std::array<std::size_t, 3> corners{}; // ids
};

/// Reads a line with its end. False when it is of another form; the item is then any.
bool ReadLine(std::string_view line, Point& point);
bool ReadLine(std::string_view line, SurfacePoint& point);
bool ReadLine(std::string_view line, Face& face);

/// Reads northing, easting and height between blanks. False when the text is of another form.
bool ReadPlace(std::string_view text, SpacePoint& place);

} // namespace terravo::LandXmlItems
