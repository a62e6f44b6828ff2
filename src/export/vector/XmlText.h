// Pieces of XML files: attributes, and coordinates in the order of LandXML.
//
// Data: a text that grows. Method: characters that mean something to XML are written as entities;
// texts come without control characters.
#pragma once

#include "contour/TriangleCut.h"

#include <string>
#include <string_view>

namespace terravo::XmlText {

/// Appends a blank, the name and the quoted value.
/// @param value  clean UTF-8.
void AppendAttribute(std::string& out, std::string_view name, std::string_view value);

/// The same of a number. One that is not finite, such as an area beyond the largest double, is left
/// out.
void AppendAttribute(std::string& out, std::string_view name, double value);

/// Appends northing and easting. Throws AppError for a number that is not finite.
void AppendPlace(std::string& out, double easting, double northing);

/// Appends northing, easting and height. Throws AppError for a number that is not finite.
void AppendPlace(std::string& out, const SpacePoint& p);

} // namespace terravo::XmlText
