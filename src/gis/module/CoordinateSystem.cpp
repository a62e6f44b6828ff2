#include "gis/module/CoordinateSystem.h"

#include "util/AppError.h"

#include <cmath>
#include <vector>

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

ToSystem::ToSystem(const OGRSpatialReference* from, int toEpsg, const std::string& path) {
    if (from == nullptr || from->IsEmpty()) {
        throw AppError(ErrorNumber::kInvalidCall, path,
                       path + ": the file does not tell its coordinate system, so its coordinates "
                              "cannot be projected.");
    }
    OGRSpatialReference flat(*from);
    flat.DemoteTo2D(nullptr);
    flat.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    const OGRSpatialReference to = SystemOf(toEpsg, path);
    if (to.IsProjected() == 0) {
        throw AppError(ErrorNumber::kInvalidCall, path,
                       path + ": EPSG:" + std::to_string(toEpsg) + " is no projected system.");
    }
    way_.reset(OGRCreateCoordinateTransformation(&flat, &to));
    if (!way_) {
        throw AppError(ErrorNumber::kInvalidCall, path,
                       path + ": there is no way from its coordinate system to EPSG:" +
                           std::to_string(toEpsg) + ".");
    }
}

std::size_t ToSystem::Change(std::span<double> x, std::span<double> y) const {
    std::vector<int> isDone(x.size());
    way_->Transform(static_cast<int>(x.size()), x.data(), y.data(), nullptr, isDone.data());
    std::size_t failures = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        failures += isDone[i] != 0 && std::isfinite(x[i]) && std::isfinite(y[i]) ? 0U : 1U;
    }
    return failures;
}

} // namespace terravo
