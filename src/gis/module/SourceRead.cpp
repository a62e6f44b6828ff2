// Reads layers of a source as points and lines.
//
// Data: features of the layers that are wished for. Method: what belongs to a layer is gathered
// first and projected at once; the vertices of lines and rings become points when all points are
// there, so that none is repeated. Every vertex lies on the ground, so nothing else is made of
// them.
#include "gis/module/CoordinateSystem.h"
#include "gis/module/ModuleFunctions.h"
#include "gis/module/RasterBands.h"
#include "gis/module/SourceFile.h"
#include "survey/PointFile.h"
#include "util/AppError.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>
#include <unordered_set>

namespace terravo {
namespace {

struct PlaceHash {
    std::size_t operator()(const SpacePoint& p) const {
        std::uint64_t mixed = 0;
        for (const double value : {p.x, p.y, p.z}) {
            mixed = (mixed ^ std::bit_cast<std::uint64_t>(value + 0.0)) * 0x9E3779B97F4A7C15U;
            mixed ^= mixed >> 32U;
        }
        return mixed;
    }
};

// A line with the code of the feature that it belongs to.
struct ReadLine {
    SpaceLine line;
    std::string code;
    bool isRing = false;
};

[[noreturn]] void Refuse(const std::string& path, const std::string& cause) {
    throw AppError(ErrorNumber::kDeviceIo, path, path + ": " + cause + ".");
}

// One layer: its features' places, names and codes.
class LayerReading : public GeometrySink {
public:
    LayerReading(const SourceFile& file, const GisLayerWish& wish, bool linesAlone)
        : file_(file), wish_(wish), linesAlone_(linesAlone) {}

    void Take(OGRLayer& layer, const OGRFeature& feature) {
        if (definition_ == nullptr) {
            definition_ = layer.GetLayerDefn();
            system_ = layer.GetSpatialRef();
            heightField_ = FieldOf(wish_.heightField);
            nameField_ = FieldOf(wish_.nameField);
            codeField_ = FieldOf(wish_.codeField);
        }
        height_ = heightField_ >= 0 ? NumberIn(feature, heightField_) : std::nullopt;
        name_ = TextOf(feature, nameField_);
        code_ = file_.IsDrawing() ? wish_.name : TextOf(feature, codeField_);
        if (const OGRGeometry* geometry = feature.GetGeometryRef()) {
            TakeApart(*geometry, *this);
        }
    }

    void Point(const OGRPoint& point) override {
        const std::optional<SpacePoint> place = linesAlone_ ? std::nullopt : PlaceOf(point);
        if (place) {
            points.push_back(*place);
            labels.Append(name_, code_);
        }
    }

    void Line(const OGRSimpleCurve& line, bool isRing) override {
        const int count = line.getNumPoints();
        const bool isClosed = isRing || (count > 2 && line.get_IsClosed() != 0);
        const int repeated = count > 1 && line.get_IsClosed() != 0 ? 1 : 0;
        ReadLine read{{{}, isClosed, name_}, code_, isRing};
        OGRPoint vertex;
        for (int i = 0; i < count - repeated; ++i) {
            line.getPoint(i, &vertex);
            if (const std::optional<SpacePoint> place = PlaceOf(vertex)) {
                read.line.vertices.push_back(*place);
            }
        }
        if (!read.line.vertices.empty()) {
            lines.push_back(std::move(read));
        }
    }

    // To be called when all features are there.
    void Project(int toEpsg) {
        std::size_t failures = 0;
        if (points.empty() && lines.empty()) {
            return;
        }
        const ToSystem way(system_, toEpsg, file_.Path());
        failures += Change(points, way);
        for (ReadLine& line : lines) {
            failures += Change(line.line.vertices, way);
        }
        if (failures > 0) {
            Refuse(file_.Path(),
                   std::to_string(failures) + (failures == 1 ? " point lies" : " points lie") +
                       " too far away to be projected to EPSG:" + std::to_string(toEpsg));
        }
    }

    std::vector<SpacePoint> points;
    PointLabels labels; // of the points
    std::vector<ReadLine> lines;
    std::int64_t withoutHeight = 0;

private:
    [[nodiscard]] int FieldOf(const std::string& name) const {
        if (name.empty()) {
            return -1;
        }
        const int field = definition_->GetFieldIndex(name.c_str());
        if (field < 0) {
            Refuse(file_.Path(),
                   "the layer \"" + wish_.name + "\" has no attribute \"" + name + "\"");
        }
        return field;
    }

    static std::string TextOf(const OGRFeature& feature, int field) {
        return field >= 0 && feature.IsFieldSetAndNotNull(field) ? feature.GetFieldAsString(field)
                                                                 : std::string();
    }

    [[nodiscard]] double HeightAt(const OGRPoint& vertex) const {
        if (wish_.isFlat) {
            return kNoHeight;
        }
        return (heightField_ >= 0 ? height_ : HeightOf(vertex)).value_or(kNoHeight);
    }

    std::optional<SpacePoint> PlaceOf(const OGRPoint& vertex) {
        const SpacePoint place{vertex.getX(), vertex.getY(), HeightAt(vertex)};
        if (!std::isfinite(place.x) || !std::isfinite(place.y) ||
            (!linesAlone_ && !HasHeight(place))) {
            ++withoutHeight;
            return std::nullopt;
        }
        return place;
    }

    static std::size_t Change(std::vector<SpacePoint>& places, const ToSystem& way) {
        std::vector<double> x;
        std::vector<double> y;
        for (const SpacePoint& place : places) {
            x.push_back(place.x);
            y.push_back(place.y);
        }
        const std::size_t failures = way.Change(x, y);
        for (std::size_t i = 0; i < places.size(); ++i) {
            places[i].x = x[i];
            places[i].y = y[i];
        }
        return failures;
    }

    const SourceFile& file_;
    const GisLayerWish& wish_;
    bool linesAlone_;
    const OGRFeatureDefn* definition_ = nullptr;
    const OGRSpatialReference* system_ = nullptr;
    int heightField_ = -1;
    int nameField_ = -1;
    int codeField_ = -1;
    std::optional<double> height_; // of the present feature
    std::string name_;
    std::string code_;
};

// Everything that was read, layer after layer.
class Gathering {
public:
    Gathering(const SourceFile& file, GisContent& content) : file_(file), content_(content) {}

    void AddPoints(const LayerReading& layer) {
        Index number = 0;
        for (const SpacePoint& place : layer.points) {
            ++number;
            Append(place, layer.labels.Name(number), layer.labels.Code(number));
        }
        content_.withoutHeight += layer.withoutHeight;
    }

    void AddVertices(const LayerReading& layer) {
        for (const ReadLine& read : layer.lines) {
            for (const SpacePoint& vertex : read.line.vertices) {
                if (taken_.insert(vertex).second) {
                    Append(vertex, {}, read.code);
                } else {
                    ++content_.repeatedVertices;
                }
            }
        }
    }

    void AddLines(LayerReading& layer) {
        for (ReadLine& read : layer.lines) {
            (read.isRing ? content_.rings : content_.lines).push_back(std::move(read.line));
        }
    }

    void PrepareForLines() {
        const PointSet& points = content_.points;
        for (Index i = 1; i <= points.count; ++i) {
            taken_.insert({points.x[i], points.y[i], points.z[i]});
        }
    }

    // A set without a name and a code needs no room for any.
    void Finish() {
        if (!hasLabels_) {
            content_.points.labels = {};
        }
    }

private:
    void Append(const SpacePoint& place, std::string_view name, std::string_view code) {
        if (content_.points.count >= kMostPoints) {
            Refuse(file_.Path(), "the file holds more points than can be triangulated");
        }
        content_.points.Append(place.x, place.y, place.z);
        content_.points.labels.Append(name, code);
        hasLabels_ = hasLabels_ || !name.empty() || !code.empty();
    }

    const SourceFile& file_;
    GisContent& content_;
    std::unordered_set<SpacePoint, PlaceHash> taken_;
    bool hasLabels_ = false;
};

void ReadLayers(const SourceFile& file, const GisWish& wish, const StopToken& stop,
                GisContent& content) {
    std::map<std::string, LayerReading> layers;
    for (const GisLayerWish& layer : wish.layers) {
        layers.try_emplace(layer.name, file, layer, wish.linesAlone);
    }
    content.isStopped = !file.ForEachFeature(
        stop, [&layers](const std::string& name, OGRLayer& layer, const OGRFeature& feature) {
            if (const auto found = layers.find(name); found != layers.end()) {
                found->second.Take(layer, feature);
            }
        });
    if (content.isStopped) {
        return;
    }
    Gathering all(file, content);
    for (auto& [name, layer] : layers) {
        if (wish.toEpsg) {
            layer.Project(*wish.toEpsg);
        }
        all.AddPoints(layer);
    }
    if (std::any_of(layers.begin(), layers.end(),
                    [](const auto& layer) { return !layer.second.lines.empty(); })) {
        all.PrepareForLines();
    }
    for (auto& [name, layer] : layers) {
        if (!wish.linesAlone) {
            all.AddVertices(layer);
        }
        all.AddLines(layer);
    }
    all.Finish();
}

void ProjectRaster(const SourceFile& file, int toEpsg, PointSet& points) {
    const ToSystem way(file.Data().GetSpatialRef(), toEpsg, file.Path());
    std::vector<double> x(points.x.begin(), points.x.end());
    std::vector<double> y(points.y.begin(), points.y.end());
    if (way.Change(x, y) > 0) {
        Refuse(file.Path(), "parts of the raster lie too far away to be projected to EPSG:" +
                                std::to_string(toEpsg));
    }
    PointSet projected;
    for (std::size_t i = 0; i < x.size(); ++i) {
        projected.Append(x[i], y[i], points.z[static_cast<Index>(i) + 1]);
    }
    points = std::move(projected);
}

} // namespace

GisContent ReadSource(const std::string& path, const GisWish& wish, const StopToken& stop) {
    GdalScope gdal;
    const SourceFile file(path, gdal);
    gdal.Forget(); // of drivers that did not take it
    GisContent content;
    if (!file.IsRaster()) {
        ReadLayers(file, wish, stop, content);
        gdal.ThrowIfFailed(path);
        return content;
    }
    for (const GisLayerWish& band : wish.layers) {
        if (!ReadBand(file, gdal, band.name, wish.rasterStep, stop, content)) {
            content.isStopped = true;
            return content;
        }
    }
    if (wish.toEpsg) {
        ProjectRaster(file, *wish.toEpsg, content.points);
    }
    return content;
}

} // namespace terravo
