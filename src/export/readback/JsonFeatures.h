// Reads the features of a GeoJSON file, whatever they are.
//
// Data: the members above the features, then feature after feature. Method: the file is read in
// blocks of whole lines. A block is an array of features once it has brackets around it and no
// comma behind it; what stands above the features is an object once it is closed. So the pieces
// make a valid text together, and none needs more memory than the longest line.
#pragma once

#include "contour/TriangleCut.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

struct JsonHeader {
    std::string name;
    std::string system;      // the name of the coordinate system; empty where none is named
    std::vector<double> box; // empty or lows, then highs
};

/// Members that a feature does not have are nothing. Texts live as long as the call.
struct JsonFeature {
    std::int64_t id = 0;
    std::string_view kind;
    std::optional<double> elevation;
    std::optional<double> low;  // min
    std::optional<double> high; // max
    std::optional<bool> index;
    std::optional<bool> closed;
    std::optional<std::string_view> name;
    std::optional<std::string_view> number;
    std::optional<std::string_view> code;
    std::string_view geometry;                // Point, LineString, Polygon, MultiPolygon
    std::span<const SpacePoint> positions;    // one at least; those of all rings, one after another
    std::span<const std::size_t> ringEnds;    // in positions; one ring for points and lines
    std::span<const std::size_t> polygonEnds; // in ringEnds
};

/// Who is told. False ends the reading.
class JsonFeatureSink {
public:
    virtual ~JsonFeatureSink() = default;
    virtual bool Header(const JsonHeader& header) = 0;
    virtual bool Feature(const JsonFeature& feature) = 0;
};

/// @return what is wrong with the file, as a sentence; nothing when all of it was read or the
///         reading was ended.
/// Throws AppError when the file cannot be read.
std::optional<std::string> ReadJsonFeatures(const std::string& path, JsonFeatureSink& sink);

} // namespace terravo
