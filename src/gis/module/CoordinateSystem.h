// Coordinate systems as GDAL wants them.
//
// Data: codes of the EPSG register. Method: GDAL's own copy of it; x is always east, whatever order
// of the axes a system has.
#pragma once

#include <ogr_spatialref.h>

#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace terravo {

/// The system of a code.
/// @param path  for the sentence. Throws AppError when the code is not known.
OGRSpatialReference SystemOf(int epsg, const std::string& path);

/// A plane system of which nothing is known.
OGRSpatialReference UndefinedPlaneSystem();

/// From the system of a layer to another; heights stay as they are.
class ToSystem {
public:
    /// @param from  null where the file tells none. Throws AppError when there is no way.
    ToSystem(const OGRSpatialReference* from, int toEpsg, const std::string& path);

    /// Changes places of which each has an x and a y.
    /// @return how many cannot be changed.
    std::size_t Change(std::span<double> x, std::span<double> y) const;

private:
    std::unique_ptr<OGRCoordinateTransformation> way_;
};

} // namespace terravo
