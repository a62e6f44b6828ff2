// How a file that goes through GDAL is to be read, and whether it can be.
//
// Data: the list of a source, and what somebody has chosen or left open. Method: what is left open
// is taken where there is one answer; everything else is a fault, which says what to choose.
#pragma once

#include "gis/GisSource.h"

#include <optional>
#include <string>
#include <vector>

namespace terravo {

struct GisPlan {
    std::vector<std::string> layers; // none: the only one with heights
    std::string heightField;         // empty: the vertices' own, or the attribute named so
    std::optional<int> toEpsg;       // the system that the coordinates are projected to
    bool degreesAsTheyAre = false;
    std::optional<Index> rasterStep; // every so manieth column and row; else each

    bool operator==(const GisPlan&) const = default;
};

/// Largest step of a raster.
inline constexpr Index kMostRasterStep = 100000;

enum class GisFault : unsigned char {
    None,
    Empty,         // nothing lies anywhere
    Picture,       // a raster without heights
    ChooseLayer,   // several may be meant
    UnknownLayer,  // detail: its name
    NoHeights,     // detail: the layer
    UnknownField,  // detail: its name
    TextField,     // an attribute that is no number; detail: its name
    Degrees,       // longitude and latitude, not projected
    NoSystem,      // to project from
    ManySystems,   // of the layers, not brought to one
    TooManyPoints, // for a triangulation
    StepOfVector,  // a raster's option
    FieldOfRaster, // a vector's option
};

struct GisVerdict {
    GisFault fault = GisFault::None;
    std::string detail;
};

/// The layers that a plan reads, 0-based places in the source: those that it names, or the only one
/// with heights.
std::vector<std::size_t> LayersOf(const GisSource& source, const GisPlan& plan);

/// Whether the plan can be carried out; coordinates may still be too far away to be projected.
GisVerdict Judge(const GisSource& source, const GisPlan& plan);

/// The verdict as a sentence without a full stop, with the layers or attributes to choose from and
/// the option of terravo-batch that chooses.
std::string SentenceOf(const GisVerdict& verdict, const GisSource& source, const GisPlan& plan);

/// What somebody who is asked begins with: the layers with points, or with lines where none has
/// points, that have heights and the first one's system; projected to the zone that they lie in
/// where they are degrees; the first band of a raster, thinned to a million points or less.
GisPlan ProposedPlan(const GisSource& source);

/// Points, vertices and cells that the plan reads; vertices that repeat each other and cells
/// without data, which only the reading tells, are counted.
std::int64_t CountOf(const GisSource& source, const GisPlan& plan);

/// The attribute that gives the heights of a layer: that of the plan, or the only one named like a
/// height where the vertices have none; empty where they have.
std::string HeightFieldOf(const GisLayer& layer, const GisPlan& plan);

/// The first attribute that is named like a name; empty where there is none.
std::string NameFieldOf(const GisLayer& layer);

/// Whether the layer has heights of its own or by an attribute named so.
bool HasHeights(const GisLayer& layer);

/// The zone of the transverse Mercator grid round the world in which the middle of a layer in
/// degrees lies, as EPSG code.
int ZoneOf(const GisLayer& layer);

/// What the library is asked for.
/// @param plan  without a fault.
GisWish WishOf(const GisSource& source, const GisPlan& plan);

/// How the file is read, in no language: "GeoPackage: points (ELEV), EPSG:25832".
std::string NameOf(const GisSource& source, const GisPlan& plan);

} // namespace terravo
