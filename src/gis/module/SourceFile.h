// A file that is read through GDAL, and the features of its layers.
//
// Data: an open data set. Method: only the drivers of the formats that are named here may open it.
// A drawing is one table for GDAL; here each of its layers is one, and what is no ground (texts,
// sheets of paper) is left out.
#pragma once

#include "gis/GisSource.h"
#include "gis/module/GdalScope.h"
#include "util/StopToken.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <functional>
#include <optional>
#include <string>

namespace terravo {

class SourceFile {
public:
    /// Throws AppError when no driver opens the file.
    SourceFile(const std::string& path, const GdalScope& gdal);

    [[nodiscard]] const std::string& Path() const { return path_; }
    [[nodiscard]] bool IsRaster() const { return isRaster_; }
    [[nodiscard]] bool IsDrawing() const { return isDrawing_; }
    [[nodiscard]] GDALDataset& Data() const { return *data_; }
    /// The usual name of the format.
    [[nodiscard]] std::string Format() const;

    /// A feature and the name of the layer that it belongs to.
    using Visit =
        std::function<void(const std::string& name, OGRLayer& layer, const OGRFeature& feature)>;
    /// Shows all features, layer by layer.
    /// @return false when it was stopped.
    bool ForEachFeature(const StopToken& stop, const Visit& visit) const;

private:
    [[nodiscard]] bool IsGround(const OGRFeature& feature) const;

    std::string path_;
    GDALDatasetUniquePtr data_;
    bool isRaster_ = false;
    bool isDrawing_ = false;
};

/// What is told of a point or a line.
class GeometrySink {
public:
    virtual ~GeometrySink() = default;
    virtual void Point(const OGRPoint& point) = 0;
    /// A ring is the outline of a polygon or of a hole in it, with its first vertex repeated.
    virtual void Line(const OGRSimpleCurve& line, bool isRing) = 0;
};

/// Takes a geometry of any kind apart; arcs become chords.
void TakeApart(const OGRGeometry& geometry, GeometrySink& sink);

/// The height of a vertex, where it has one.
std::optional<double> HeightOf(const OGRPoint& point);

/// The number in a field, which may be a text; nothing where it is empty or none.
std::optional<double> NumberIn(const OGRFeature& feature, int field);

/// What a system is called. Coordinates that are no degrees make it a plane one.
GisSystem SystemOfLayer(const OGRSpatialReference* system, const Extent& x, const Extent& y);

} // namespace terravo
