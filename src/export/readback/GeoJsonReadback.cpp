#include "export/readback/GeoJsonReadback.h"

#include "export/readback/ContentCheck.h"
#include "export/readback/JsonFeatures.h"
#include "export/vector/CleanText.h"

#include <algorithm>
#include <limits>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace terravo {
namespace {

constexpr int kDegrees = 4326; // readers assume it where no system is named

class Reader : public JsonFeatureSink {
public:
    explicit Reader(const VectorContent& content)
        : content_(content), check_(content, PartsToCheck(content)) {}

    bool Header(const JsonHeader& header) override {
        box_ = header.box;
        const bool isNamed = content_.epsg && *content_.epsg != kDegrees;
        const std::string system =
            isNamed ? "urn:ogc:def:crs:EPSG::" + std::to_string(*content_.epsg) : "";
        if (header.system != system) {
            check_.Stray("another coordinate system, \"" + header.system + "\"");
        }
        if (header.name != CleanText(content_.name)) {
            check_.Stray("another name, \"" + header.name + "\"");
        }
        return !check_.HasDifference();
    }

    bool Feature(const JsonFeature& feature) override {
        if (feature.id != ++features_) {
            check_.Stray("a feature whose id is not its place");
        }
        for (const SpacePoint& p : feature.positions) {
            Include(p);
        }
        if (!Take(feature)) {
            check_.Stray("a feature of another form, number " + std::to_string(features_));
        }
        return !check_.HasDifference();
    }

    std::optional<std::string> Finish() {
        if (!check_.HasDifference() && box_ != (features_ == 0 ? std::vector<double>() : Box())) {
            check_.Stray("another box around all");
        }
        return check_.Finish();
    }

private:
    // Numbers and codes are properties of the points.
    static VectorParts PartsToCheck(const VectorContent& content) {
        return content.parts.And({VectorPart::Contours, VectorPart::IndexContours,
                                  VectorPart::Bands, VectorPart::Triangles, VectorPart::Points,
                                  VectorPart::Hull, VectorPart::Boundary, VectorPart::Breaklines});
    }

    void Include(const SpacePoint& p) {
        low_ = {std::min(low_.x, p.x), std::min(low_.y, p.y), std::min(low_.z, p.z)};
        high_ = {std::max(high_.x, p.x), std::max(high_.y, p.y), std::max(high_.z, p.z)};
    }
    [[nodiscard]] std::vector<double> Box() const {
        return {low_.x, low_.y, low_.z, high_.x, high_.y, high_.z};
    }

    // False for a feature that does not have what its kind has.
    bool Take(const JsonFeature& feature) {
        if (feature.kind == "triangle") {
            return TakeTriangle(feature);
        }
        if (feature.kind == "point") {
            return TakePoint(feature);
        }
        if (feature.kind == "contour") {
            return TakeContour(feature);
        }
        return feature.kind == "band" ? TakeBand(feature) : TakeLine(feature);
    }

    bool TakeTriangle(const JsonFeature& feature) {
        const std::span<const SpacePoint> p = feature.positions;
        if (feature.geometry != "Polygon" || feature.ringEnds.size() != 1 || p.size() != 4 ||
            p[3] != p[0]) {
            return false;
        }
        check_.Corners({p[0], p[1], p[2]});
        return true;
    }

    // The reader of texts sees those that no file holds as they were replaced.
    static std::string_view Meant(std::string_view found, std::string_view given) {
        return found != given && found == CleanText(given) ? given : found;
    }

    bool TakePoint(const JsonFeature& feature) {
        if (feature.geometry != "Point" || feature.elevation != feature.positions.front().z) {
            return false;
        }
        const auto number = static_cast<Index>(++points_);
        if (points_ > content_.PointCount()) {
            check_.Stray("a point too many");
            return true;
        }
        const std::string given = content_.NameOf(number);
        const std::string_view code = content_.CodeOf(number);
        std::optional<std::string_view> foundName;
        std::optional<std::string_view> foundCode;
        if (content_.parts.Has(VectorPart::Numbers)) {
            foundName = Meant(feature.number.value_or(std::string_view()), given);
        }
        if (content_.parts.Has(VectorPart::Codes)) {
            foundCode = Meant(feature.code.value_or(std::string_view()), code);
        }
        check_.Point(feature.positions.front(), foundName, foundCode);
        return true;
    }

    // A closed line repeats its first position. Nothing for one that does not.
    static std::optional<std::span<const SpacePoint>> VerticesOf(const JsonFeature& feature) {
        std::span<const SpacePoint> places = feature.positions;
        if (feature.geometry != "LineString" || !feature.closed || places.size() < 2 ||
            (*feature.closed && places.front() != places.back())) {
            return std::nullopt;
        }
        return places.first(places.size() - (*feature.closed ? 1 : 0));
    }

    bool TakeContour(const JsonFeature& feature) {
        const auto vertices = VerticesOf(feature);
        if (!vertices || !feature.elevation || !feature.index) {
            return false;
        }
        check_.Contour(*feature.elevation, *feature.closed, feature.index, *vertices);
        return true;
    }

    bool TakeLine(const JsonFeature& feature) {
        const auto vertices = VerticesOf(feature);
        const bool isHull = feature.kind == "hull";
        const bool isBoundary = feature.kind == "boundary";
        if (!vertices || !(isHull || isBoundary || feature.kind == "breakline")) {
            return false;
        }
        check_.Line(isHull       ? SpaceLineKind::Hull
                    : isBoundary ? SpaceLineKind::Boundary
                                 : SpaceLineKind::Breakline,
                    *feature.closed, *vertices);
        return true;
    }

    bool TakeBand(const JsonFeature& feature) {
        if (!feature.low || !feature.high ||
            (feature.geometry != "Polygon" && feature.geometry != "MultiPolygon")) {
            return false;
        }
        std::size_t ring = 0;
        for (const std::size_t end : feature.polygonEnds) {
            if (!TakePolygon(feature, ring, end)) {
                return false;
            }
            ring = end;
        }
        return true;
    }

    bool TakePolygon(const JsonFeature& feature, std::size_t firstRing, std::size_t endRing) {
        std::vector<std::vector<PlanPoint>> rings;
        for (std::size_t r = firstRing; r < endRing; ++r) {
            const std::size_t begin = r == 0 ? 0 : feature.ringEnds[r - 1];
            const std::span<const SpacePoint> places =
                feature.positions.subspan(begin, feature.ringEnds[r] - begin);
            const bool isLevel =
                std::all_of(places.begin(), places.end(),
                            [&feature](const SpacePoint& p) { return p.z == feature.low; });
            if (!isLevel || places.size() < 2 || places.front() != places.back()) {
                return false;
            }
            rings.emplace_back();
            for (const SpacePoint& p : places.first(places.size() - 1)) {
                rings.back().push_back({p.x, p.y});
            }
        }
        const std::vector<std::span<const PlanPoint>> spans(rings.begin(), rings.end());
        check_.BandPolygon(*feature.low, *feature.high, spans);
        return !spans.empty();
    }

    static constexpr double kNone = std::numeric_limits<double>::infinity();

    const VectorContent& content_;
    ContentCheck check_;
    std::vector<double> box_; // as the file has it
    SpacePoint low_{kNone, kNone, kNone};
    SpacePoint high_{-kNone, -kNone, -kNone};
    std::int64_t features_ = 0;
    std::size_t points_ = 0;
};

} // namespace

std::optional<std::string> CheckGeoJson(const std::string& path, const VectorContent& content,
                                        const VectorOptions& /*options*/) {
    Reader reader(content);
    if (std::optional<std::string> fault = ReadJsonFeatures(path, reader)) {
        return fault;
    }
    return reader.Finish();
}

} // namespace terravo
