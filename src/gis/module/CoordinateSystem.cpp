#include "gis/module/CoordinateSystem.h"

#include "util/AppError.h"

namespace terravo {
namespace {

// By this name a GeoPackage knows its number -1.
constexpr const char* kUndefinedPlane =
    "ENGCRS[\"Undefined Cartesian SRS\",EDATUM[\"Unknown engineering datum\"],CS[Cartesian,2],"
    "AXIS[\"x\",east,ORDER[1],LENGTHUNIT[\"metre\",1]],"
    "AXIS[\"y\",north,ORDER[2],LENGTHUNIT[\"metre\",1]]]";

} // namespace

OGRSpatialReference SystemOf(int epsg, const std::string& path) {
    OGRSpatialReference system;
    if (system.importFromEPSG(epsg) != OGRERR_NONE) {
        throw AppError(ErrorNumber::kInvalidCall, path,
                       path + ": no coordinate system has the code EPSG:" + std::to_string(epsg) +
                           ".");
    }
    system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    return system;
}

OGRSpatialReference UndefinedPlaneSystem() {
    OGRSpatialReference system;
    system.importFromWkt(kUndefinedPlane);
    system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    return system;
}

} // namespace terravo
