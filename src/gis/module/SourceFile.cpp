#include "gis/module/SourceFile.h"

#include "util/AppError.h"

#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <string_view>

namespace terravo {
namespace {

constexpr std::array<const char*, 6> kVectorDrivers{"GPKG",    "ESRI Shapefile", "DXF",
                                                    "GeoJSON", "LIBKML",         nullptr};
constexpr std::array<const char*, 8> kRasterDrivers{"GTiff", "HFA",  "EHdr",  "SRTMHGT",
                                                    "DTED",  "GSBG", "GS7BG", nullptr};

struct FormatName {
    std::string_view driver;
    const char* name;
};

constexpr std::array<FormatName, 6> kNames{{{"GPKG", "GeoPackage"},
                                            {"ESRI Shapefile", "Shapefile"},
                                            {"LIBKML", "KML"},
                                            {"GTiff", "GeoTIFF"},
                                            {"GSBG", "Surfer grid"},
                                            {"GS7BG", "Surfer grid"}}};

// Names that GDAL would take for something else than a file.
void RefuseSpecialName(const std::string& path) {
    if (path.starts_with("/vsi")) {
        throw AppError(ErrorNumber::kDeviceIo, path, path + ": this is not the name of a file.");
    }
}

GDALDatasetUniquePtr Open(const std::string& path, unsigned flags, const char* const* drivers) {
    return GDALDatasetUniquePtr(
        GDALDataset::Open(path.c_str(), flags | GDAL_OF_READONLY, drivers, nullptr, nullptr));
}

std::string TextIn(const OGRFeature& feature, const char* name) {
    const int field = feature.GetFieldIndex(name);
    return field >= 0 && feature.IsFieldSetAndNotNull(field) ? feature.GetFieldAsString(field)
                                                             : std::string();
}

constexpr const char* kDrawingLayer = "Layer";

std::optional<double> NumberFrom(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return std::nullopt;
    }
    text = text.substr(first, text.find_last_not_of(" \t") - first + 1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

// A little beyond the globe, for what is unwrapped or rounded.
bool MayBeDegrees(const Extent& x, const Extent& y) {
    constexpr double kMostLongitude = 361;
    constexpr double kMostLatitude = 90.01;
    return x.min >= -kMostLongitude && x.max <= kMostLongitude && y.min >= -kMostLatitude &&
           y.max <= kMostLatitude;
}

std::optional<int> EpsgOf(const OGRSpatialReference& system) {
    const char* authority = system.GetAuthorityName(nullptr);
    const char* code = system.GetAuthorityCode(nullptr);
    if (authority == nullptr || code == nullptr || std::string_view(authority) != "EPSG") {
        return std::nullopt;
    }
    const int number = std::atoi(code);
    return number > 0 ? std::optional(number) : std::nullopt;
}

} // namespace

SourceFile::SourceFile(const std::string& path, const GdalScope& gdal) : path_(path) {
    RefuseSpecialName(path);
    data_ = Open(path, GDAL_OF_VECTOR, kVectorDrivers.data());
    if (!data_) {
        data_ = Open(path, GDAL_OF_RASTER | GDAL_OF_VERBOSE_ERROR, kRasterDrivers.data());
        isRaster_ = true;
    }
    if (!data_) {
        gdal.Throw(path);
    }
    isDrawing_ = std::string_view(data_->GetDriverName()) == "DXF";
}

std::string SourceFile::Format() const {
    const std::string driver = data_->GetDriverName();
    for (const FormatName& known : kNames) {
        if (known.driver == driver) {
            return known.name;
        }
    }
    return driver;
}

// A text stands beside what it tells of, not where something was measured.
bool SourceFile::IsGround(const OGRFeature& feature) const {
    return !isDrawing_ || (TextIn(feature, "PaperSpace") != "1" && TextIn(feature, "Text").empty());
}

bool SourceFile::ForEachFeature(const StopToken& stop, const Visit& visit) const {
    constexpr GIntBig kFeaturesBetweenLooks = 1024;
    for (OGRLayer* layer : data_->GetLayers()) {
        const auto expected = static_cast<double>(layer->GetFeatureCount(FALSE));
        const std::string layerName = layer->GetName();
        GIntBig seen = 0;
        layer->ResetReading();
        while (const OGRFeatureUniquePtr feature{layer->GetNextFeature()}) {
            if (seen++ % kFeaturesBetweenLooks == 0 &&
                !stop.GoesOn("read", expected > 0 ? static_cast<double>(seen) / expected : 0)) {
                return false;
            }
            if (IsGround(*feature)) {
                visit(isDrawing_ ? TextIn(*feature, kDrawingLayer) : layerName, *layer, *feature);
            }
        }
    }
    return true;
}

void TakeApart(const OGRGeometry& geometry, GeometrySink& sink) {
    if (geometry.hasCurveGeometry()) {
        const std::unique_ptr<OGRGeometry> straight(geometry.getLinearGeometry());
        if (straight && !straight->hasCurveGeometry()) {
            TakeApart(*straight, sink);
        }
        return;
    }
    const OGRwkbGeometryType kind = wkbFlatten(geometry.getGeometryType());
    if (kind == wkbPoint) {
        if (!geometry.IsEmpty()) {
            sink.Point(*geometry.toPoint());
        }
    } else if (kind == wkbLineString) {
        sink.Line(*geometry.toLineString(), false);
    } else if (OGR_GT_IsSubClassOf(kind, wkbPolygon)) { // triangles, too
        for (const OGRLinearRing* ring : *geometry.toPolygon()) {
            sink.Line(*ring, true);
        }
    } else if (OGR_GT_IsSubClassOf(kind, wkbGeometryCollection)) {
        for (const OGRGeometry* part : *geometry.toGeometryCollection()) {
            TakeApart(*part, sink);
        }
    } else if (OGR_GT_IsSubClassOf(kind, wkbPolyhedralSurface)) {
        for (const OGRPolygon* part : *geometry.toPolyhedralSurface()) {
            TakeApart(*part, sink);
        }
    }
}

std::optional<double> HeightOf(const OGRPoint& point) {
    const double z = point.getZ();
    return point.Is3D() && std::isfinite(z) ? std::optional(z) : std::nullopt;
}

std::optional<double> NumberIn(const OGRFeature& feature, int field) {
    if (!feature.IsFieldSetAndNotNull(field)) {
        return std::nullopt;
    }
    switch (feature.GetFieldDefnRef(field)->GetType()) {
    case OFTInteger:
    case OFTInteger64:
    case OFTReal: {
        const double value = feature.GetFieldAsDouble(field);
        return std::isfinite(value) ? std::optional(value) : std::nullopt;
    }
    case OFTString:
        return NumberFrom(feature.GetFieldAsString(field));
    default:
        return std::nullopt;
    }
}

GisSystem SystemOfLayer(const OGRSpatialReference* system, const Extent& x, const Extent& y) {
    // A file of metres that names no system counts as degrees for some drivers.
    if (system == nullptr || system->IsEmpty() ||
        (system->IsGeographic() != 0 && !MayBeDegrees(x, y))) {
        return {};
    }
    const char* name = system->GetName();
    return {name != nullptr ? name : "", EpsgOf(*system), system->IsGeographic() != 0};
}

} // namespace terravo
