// What a source holds: its layers, with counts, fields and heights.
//
// Data: all features of a file, looked at once; of a raster only its head. Method: each layer takes
// in the geometry and the attributes of its features, so that what is told of them is true of all.
#include "gis/module/ModuleFunctions.h"
#include "gis/module/RasterBands.h"
#include "gis/module/SourceFile.h"

#include <cmath>
#include <map>

namespace terravo {
namespace {

class LayerScan : public GeometrySink {
public:
    explicit LayerScan(GisLayer& layer) : layer_(layer) {}

    void Point(const OGRPoint& point) override {
        ++layer_.points;
        Vertex(point);
    }

    void Line(const OGRSimpleCurve& line, bool isRing) override {
        ++(isRing ? layer_.rings : layer_.lines);
        OGRPoint vertex;
        const int repeated = line.getNumPoints() > 1 && line.get_IsClosed() ? 1 : 0;
        for (int i = 0; i < line.getNumPoints() - repeated; ++i) {
            line.getPoint(i, &vertex);
            Vertex(vertex);
        }
    }

private:
    void Vertex(const OGRPoint& vertex) {
        if (!std::isfinite(vertex.getX()) || !std::isfinite(vertex.getY())) {
            return;
        }
        ++layer_.vertices;
        layer_.x.Include(vertex.getX());
        layer_.y.Include(vertex.getY());
        if (const std::optional<double> z = HeightOf(vertex)) {
            layer_.z.Include(*z);
            layer_.hasHeights = layer_.hasHeights || std::fabs(*z) > 0;
        }
    }

    GisLayer& layer_;
};

bool MayBeNumbers(const OGRFieldDefn& field) {
    const OGRFieldType type = field.GetType();
    return field.GetSubType() != OFSTBoolean &&
           (type == OFTInteger || type == OFTInteger64 || type == OFTReal || type == OFTString);
}

std::vector<GisField> FieldsOf(const OGRFeatureDefn& definition) {
    std::vector<GisField> fields;
    for (int i = 0; i < definition.GetFieldCount(); ++i) {
        const OGRFieldDefn& field = *definition.GetFieldDefn(i);
        fields.push_back({field.GetNameRef(), MayBeNumbers(field), {}});
    }
    return fields;
}

void IncludeFields(const OGRFeature& feature, std::vector<GisField>& fields) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const int field = static_cast<int>(i);
        if (!fields[i].isNumber || !feature.IsFieldSetAndNotNull(field)) {
            continue;
        }
        if (const std::optional<double> number = NumberIn(feature, field)) {
            fields[i].values.Include(*number);
        } else {
            fields[i].isNumber = false;
        }
    }
}

// The layers of a vector file, in the order in which their first features come.
class SourceScan {
public:
    explicit SourceScan(const SourceFile& file) : file_(file) {
        if (!file.IsDrawing()) {
            for (OGRLayer* layer : file.Data().GetLayers()) {
                Begin(layer->GetName(), *layer);
            }
        }
    }

    void Take(const std::string& name, OGRLayer& layer, const OGRFeature& feature) {
        const auto found = places_.find(name);
        GisLayer& taken = layers_[found != places_.end() ? found->second : Begin(name, layer)];
        if (const OGRGeometry* geometry = feature.GetGeometryRef()) {
            LayerScan scan(taken);
            TakeApart(*geometry, scan);
        }
        IncludeFields(feature, taken.fields);
    }

    std::vector<GisLayer> Finish() {
        for (std::size_t i = 0; i < layers_.size(); ++i) {
            GisLayer& layer = layers_[i];
            for (GisField& field : layer.fields) {
                field.isNumber = field.isNumber && field.values.min <= field.values.max;
            }
            layer.system = SystemOfLayer(systems_[i], layer.x, layer.y);
        }
        return std::move(layers_);
    }

private:
    // Two tables of one name, as folders of a KML file may be, count as one.
    std::size_t Begin(const std::string& name, OGRLayer& layer) {
        const auto [place, isNew] = places_.emplace(name, layers_.size());
        if (isNew) {
            layers_.emplace_back();
            layers_.back().name = name;
            systems_.push_back(layer.GetSpatialRef());
            if (!file_.IsDrawing()) { // those of a drawing describe entities
                layers_.back().fields = FieldsOf(*layer.GetLayerDefn());
            }
        }
        return place->second;
    }

    const SourceFile& file_;
    std::map<std::string, std::size_t> places_;
    std::vector<GisLayer> layers_;
    std::vector<const OGRSpatialReference*> systems_;
};

} // namespace

GisSource ListSource(const std::string& path, const StopToken& stop) {
    GdalScope gdal;
    const SourceFile file(path, gdal);
    gdal.Forget(); // of drivers that did not take it
    GisSource source;
    source.format = file.Format();
    source.isRaster = file.IsRaster();
    if (file.IsRaster()) {
        source.layers = ListBands(file);
        return source;
    }
    SourceScan scan(file);
    source.isStopped = !file.ForEachFeature(
        stop, [&scan](const std::string& name, OGRLayer& layer, const OGRFeature& feature) {
            scan.Take(name, layer, feature);
        });
    gdal.ThrowIfFailed(path);
    source.layers = scan.Finish();
    return source;
}

} // namespace terravo
