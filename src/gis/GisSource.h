// What a file that goes through GDAL holds, and what is to be read of it.
//
// Data: plain values: the layers of a source with their counts, fields and coordinate system; a
// wish; the points and lines that came of it. Method: the library fills them, the core decides.
#pragma once

#include "export/vector/VectorContent.h"
#include "survey/PointSet.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace terravo {

/// An attribute of the features of a layer.
struct GisField {
    std::string name;
    bool isNumber = false; // every value that there is
    Extent values;         // of a number
};

/// A coordinate system as far as a file tells it.
struct GisSystem {
    std::string name; // empty where the file tells none
    std::optional<int> epsg;
    bool isGeographic = false; // degrees, and the coordinates may well be such
};

/// A table of features, a layer of a drawing or a band of a raster.
struct GisLayer {
    std::string name;
    std::int64_t points = 0;   // features that are points
    std::int64_t lines = 0;    // lines, however many a feature has
    std::int64_t rings = 0;    // of polygons
    std::int64_t vertices = 0; // of all of them; of a raster its cells
    Extent x;                  // of the vertices
    Extent y;
    Extent z;                // where there are heights; unknown of a raster
    bool hasHeights = false; // not all of them 0; of a raster that it is no picture
    std::vector<GisField> fields;
    GisSystem system;
    std::int64_t columns = 0; // of a raster
    std::int64_t rows = 0;
};

struct GisSource {
    std::string format; // "GeoPackage"
    bool isRaster = false;
    bool isStopped = false; // the list is not complete
    std::vector<GisLayer> layers;
};

/// What is to be read of a layer.
struct GisLayerWish {
    std::string name;
    std::string heightField; // empty: the heights of the vertices
    std::string nameField;   // empty: none
    std::string codeField;   // likewise; layers of a drawing are codes by themselves
    bool isFlat = false;     // of lines alone: whatever heights there are mean nothing
};

struct GisWish {
    std::vector<GisLayerWish> layers;
    std::optional<int> toEpsg; // the system that coordinates are projected to
    Index rasterStep = 1;      // every so manieth column and row
    /// Of a vector source only lines and rings, whose vertices are no points; those without a
    /// height have kNoHeight. Points are left out.
    bool linesAlone = false;
};

struct GisContent {
    /// Those of points first, in their order, then the vertices of lines and rings, each place
    /// once. Labels where a layer has names or codes.
    PointSet points;
    std::vector<SpaceLine> lines;
    std::vector<SpaceLine> rings;      // closed
    std::int64_t withoutHeight = 0;    // points, vertices and cells left out
    std::int64_t repeatedVertices = 0; // of lines and rings, left out
    bool isStopped = false;
};

} // namespace terravo
