#include "export/readback/LandXmlElements.h"

namespace terravo::LandXmlElements {
namespace {

// The frequent ones first.
constexpr Place kPlaces[] = {
    {"F", Element::F, Element::Faces, true, true},
    {"P", Element::P, Element::Pnts, true, true},
    {"CgPoint", Element::CgPoint, Element::CgPoints, true, true},
    {"Contour", Element::Contour, Element::Contours, false, true},
    {"PntList2D", Element::ContourList, Element::Contour, true, true},
    {"PntList3D", Element::BreaklineList, Element::Breakline, true, true},
    {"Breakline", Element::Breakline, Element::Breaklines, false, true},
    {"PntList3D", Element::BoundaryList, Element::Boundary, true, true},
    {"Boundary", Element::Boundary, Element::Boundaries, false, true},
    {"LandXML", Element::LandXml, Element::None, false, false},
    {"Units", Element::Units, Element::LandXml, false, false},
    {"Metric", Element::Metric, Element::Units, false, false},
    {"Imperial", Element::Imperial, Element::Units, false, false},
    {"CoordinateSystem", Element::CoordinateSystem, Element::LandXml, false, false},
    {"Project", Element::Project, Element::LandXml, false, false},
    {"Application", Element::Application, Element::LandXml, false, false},
    {"CgPoints", Element::CgPoints, Element::LandXml, false, false},
    {"Surfaces", Element::Surfaces, Element::LandXml, false, false},
    {"Surface", Element::Surface, Element::Surfaces, false, false},
    {"SourceData", Element::SourceData, Element::Surface, false, false},
    {"Boundaries", Element::Boundaries, Element::SourceData, false, false},
    {"Breaklines", Element::Breaklines, Element::SourceData, false, false},
    {"Contours", Element::Contours, Element::SourceData, false, false},
    {"Definition", Element::Definition, Element::Surface, false, false},
    {"Pnts", Element::Pnts, Element::Definition, false, false},
    {"Faces", Element::Faces, Element::Definition, false, false},
};

} // namespace

const Place* FindPlace(std::string_view name, Element parent) {
    for (const Place& place : kPlaces) {
        if (place.name == name && place.parent == parent) {
            return &place;
        }
    }
    return nullptr;
}

} // namespace terravo::LandXmlElements
