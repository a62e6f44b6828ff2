// What the library terravo_gis does for the programs: a table of functions.
//
// Data: plain values of the core, so that no header of GDAL is seen here. Method: the programs load
// the library when a file of such a format is asked for, and take the table from its only symbol;
// they refuse one of another version, which was built from other sources.
#pragma once

#include "export/vector/VectorContent.h"
#include "gis/GisSource.h"
#include "util/StopToken.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace terravo {

/// To be raised whenever the table, or a value that its functions take, changes.
inline constexpr int kGisVersion = 2;

inline constexpr std::size_t kSizeOfGisValues = sizeof(VectorContent) + sizeof(GisSource) +
                                                sizeof(GisLayer) + sizeof(GisWish) +
                                                sizeof(GisContent);

/// A file of such a set cannot have more bytes: offsets in it are numbers of 31 bits.
inline constexpr std::int64_t kMostShapefileBytes = 2147483647;

/// All throw AppError, whose sentence begins with the path and ends with a full stop.
struct GisFunctions {
    int version = kGisVersion;
    /// Catches most libraries of other sources that have kept the version.
    std::size_t sizeOfValues = kSizeOfGisValues;

    /// Writes a new GeoPackage in one transaction.
    /// @param path  no file may have that name.
    void (*writeGeoPackage)(const std::string& path, const VectorContent& content,
                            std::vector<std::string>& remarks) = nullptr;

    /// Writes one set of files a kind of content into a folder.
    /// @param folder     exists; files of the same names in it are overwritten.
    /// @param mostBytes  that a file may have; kMostShapefileBytes unless a test says otherwise.
    void (*writeShapefiles)(const std::string& folder, const VectorContent& content,
                            std::int64_t mostBytes, std::vector<std::string>& remarks) = nullptr;

    /// Lists what a file, or a folder of Shapefiles, holds.
    GisSource (*list)(const std::string& path, const StopToken& stop) = nullptr;

    /// Reads layers of it. Throws also for a layer or a field that is not there, for a system that
    /// is not known or that some places cannot be projected to, and for too many points.
    GisContent (*read)(const std::string& path, const GisWish& wish,
                       const StopToken& stop) = nullptr;
};

/// The library's symbol, and its type.
inline constexpr const char* kGisSymbol = "TerravoGisFunctions";
using GisEntry = const GisFunctions* (*)();

} // namespace terravo
