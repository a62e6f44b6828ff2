// The elements of the LandXML files that the program writes, each in the one that it belongs to.
//
// Data: a name, its parent, whether text stands in it. Method: the same name in two places makes
// two elements, so that a reader needs no memory of where it is.
#pragma once

#include <cstddef>
#include <string_view>

namespace terravo::LandXmlElements {

enum class Element : unsigned char {
    None,
    LandXml,
    Units,
    Metric,
    Imperial,
    CoordinateSystem,
    Project,
    Application,
    CgPoints,
    CgPoint,
    Surfaces,
    Surface,
    SourceData,
    Boundaries,
    Boundary,
    BoundaryList,
    Breaklines,
    Breakline,
    BreaklineList,
    Contours,
    Contour,
    ContourList,
    Definition,
    Pnts,
    P,
    Faces,
    F,
};
inline constexpr std::size_t kElementCount = static_cast<std::size_t>(Element::F) + 1;

/// An element in its place.
struct Place {
    std::string_view name;
    Element element;
    Element parent;
    bool hasText;
    bool isMany; // may stand more than once in a file
};

/// The element of that name in its parent; null where there is none.
const Place* FindPlace(std::string_view name, Element parent);

} // namespace terravo::LandXmlElements
