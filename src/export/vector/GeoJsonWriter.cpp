#include "export/vector/GeoJsonWriter.h"

#include "export/vector/CleanText.h"
#include "export/vector/CornerAhead.h"
#include "export/vector/VectorBox.h"
#include "export/vector/VectorLines.h"
#include "export/vector/VectorNumber.h"
#include "util/AppError.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace terravo {
namespace {

using VectorNumber::AppendReal;
using VectorNumber::AppendWhole;

// Longitude and latitude in degrees, which readers assume where no system is named.
constexpr int kWgs84 = 4326;

// The text has no control characters.
void AppendQuoted(std::string& out, std::string_view text) {
    out += '"';
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
        }
        out += c;
    }
    out += '"';
}

void AppendPosition(std::string& out, double x, double y, double z) {
    out += '[';
    AppendReal(out, x);
    out += ',';
    AppendReal(out, y);
    out += ',';
    AppendReal(out, z);
    out += ']';
}

void AppendPosition(std::string& out, const SpacePoint& p) {
    AppendPosition(out, p.x, p.y, p.z);
}

// The positions of all points as text: each is the corner of some six triangles, so printing it
// once and copying it saves most of the printing.
class PositionTexts {
public:
    explicit PositionTexts(const std::vector<SpacePoint>& points) {
        constexpr std::size_t kUsualPosition = 40; // bytes
        text_.reserve(points.size() * kUsualPosition);
        begins_.reserve(points.size() + 1);
        for (const SpacePoint& point : points) {
            begins_.push_back(text_.size());
            AppendPosition(text_, point);
        }
        begins_.push_back(text_.size());
    }

    [[nodiscard]] std::string_view Of(Index point) const {
        const std::uint64_t begin = Begin(point);
        return std::string_view(text_).substr(begin, Begin(point + 1) - begin);
    }
    void LookAhead(const std::vector<Triangle>& triangles, std::size_t t) const {
        LookAheadAtCorners(
            triangles, t, [this](Index point) { return &Begin(point); },
            [this](Index point) { return text_.data() + Begin(point); });
    }

private:
    [[nodiscard]] const std::uint64_t& Begin(Index point) const {
        return begins_[static_cast<std::size_t>(point) - 1];
    }

    std::string text_;
    std::vector<std::uint64_t> begins_; // and the end of the last
};

class Writer {
public:
    Writer(OutputFile& out, const VectorContent& content, std::vector<std::string>& remarks)
        : out_(out), content_(content), remarks_(remarks) {}

    // What covers the others comes first, since readers draw in this order.
    void Write() {
        RefuseShortLines();
        const VectorBox box = BoxOf(content_);
        TellOfSystem(box);
        WriteHead(box);
        WriteBands();
        WriteTriangles();
        WriteContours();
        WriteLines(VectorPart::Hull, "hull");
        WriteLines(VectorPart::Boundary, "boundary");
        WriteLines(VectorPart::Breaklines, "breakline");
        WritePoints();
        out_.Append(features_ == 0 ? "]}\n" : "\n]}\n");
    }

private:
    [[nodiscard]] bool Wants(VectorPart part) const { return content_.parts.Has(part); }

    void RefuseShortLines() const {
        if (HasShortLine(content_)) {
            throw AppError(ErrorNumber::kInvalidCall, "GeoJSON",
                           "A line has fewer than two vertices, which GeoJSON cannot hold.");
        }
    }

    void TellOfSystem(const VectorBox& box) {
        if (content_.epsg && *content_.epsg != kWgs84) {
            remarks_.push_back("The GeoJSON file names its coordinate system, EPSG:" +
                               std::to_string(*content_.epsg) +
                               "; web maps ignore that and take its coordinates for degrees.");
        } else if (!box.IsEmpty() && !box.IsWithinDegrees()) {
            remarks_.push_back(
                "The GeoJSON file names no coordinate system, and its coordinates are no degrees: "
                "other programs will show it in a wrong place.");
        } else if (!content_.epsg) {
            remarks_.push_back("The GeoJSON file names no coordinate system: other programs take "
                               "its coordinates for longitude and latitude.");
        }
        if (content_.unit != LengthUnit::Metre) {
            remarks_.push_back("The GeoJSON file cannot say that its heights are in feet: other "
                               "programs take them for metres.");
        }
    }

    void WriteHead(const VectorBox& box) {
        std::string& text = out_.Buffer();
        text += R"({"type":"FeatureCollection","name":)";
        AppendQuoted(text, CleanText(content_.name));
        if (content_.epsg && *content_.epsg != kWgs84) {
            text += R"(,"crs":{"type":"name","properties":{"name":"urn:ogc:def:crs:EPSG::)";
            AppendWhole(text, *content_.epsg);
            text += "\"}}";
        }
        if (!box.IsEmpty()) {
            WriteBox(box);
        }
        out_.Append(",\"features\":[\n");
    }

    void WriteBox(const VectorBox& box) {
        std::string& text = out_.Buffer();
        text += ",\"bbox\":";
        AppendPosition(text, box.low);
        text.back() = ',';
        const std::size_t middle = text.size();
        AppendPosition(text, box.high);
        text.erase(middle, 1);
    }

    // Up to the properties behind the kind.
    std::string& Begin(std::string_view kind) {
        out_.Append(features_ == 0 ? "" : ",\n");
        std::string& text = out_.Buffer();
        text += R"({"type":"Feature","id":)";
        AppendWhole(text, ++features_);
        text += R"(,"properties":{"kind":")";
        text.append(kind) += '"';
        return text;
    }
    void BeginGeometry(std::string_view type) {
        out_.Buffer().append(R"(},"geometry":{"type":")").append(type) += R"(","coordinates":)";
    }
    void End() { out_.Append("}}"); }

    void WriteContours() {
        for (const VectorContour& contour : content_.contours) {
            if (content_.Shows(contour)) {
                WriteContour(contour);
            }
        }
    }

    void WriteContour(const VectorContour& contour) {
        const VectorLevel& level = content_.LevelOf(contour);
        std::string& text = Begin("contour");
        text += ",\"elevation\":";
        AppendReal(text, level.value);
        text += level.index ? ",\"index\":true" : ",\"index\":false";
        text += contour.closed ? ",\"closed\":true" : ",\"closed\":false";
        BeginGeometry("LineString");
        WriteRing(content_.VerticesOf(contour), contour.closed, level.value);
        End();
    }

    // Places of one height, whose text is made once; closed ones repeat the first.
    void WriteRing(std::span<const PlanPoint> places, bool closed, double height) {
        heightText_ = ",";
        AppendReal(heightText_, height);
        heightText_ += ']';
        const auto write = [this](char before, const PlanPoint& place) {
            std::string& text = out_.Buffer();
            text += before;
            text += '[';
            AppendReal(text, place.x);
            text += ',';
            AppendReal(text, place.y);
            out_.Append(heightText_);
        };
        char before = '[';
        for (const PlanPoint& place : places) {
            write(std::exchange(before, ','), place);
        }
        if (closed) {
            write(before, places.front());
        }
        out_.Append("]");
    }

    void WriteBands() {
        if (Wants(VectorPart::Bands)) {
            for (const LevelBand& band : content_.bands) {
                WriteBand(band);
            }
        }
    }

    // A band has no height of its own: it lies at its lower level.
    void WriteBand(const LevelBand& band) {
        if (band.polygons.empty()) {
            return;
        }
        std::string& text = Begin("band");
        text += ",\"min\":";
        AppendReal(text, band.low);
        text += ",\"max\":";
        AppendReal(text, band.high);
        const bool isOne = band.polygons.size() == 1;
        BeginGeometry(isOne ? "Polygon" : "MultiPolygon");
        out_.Append(isOne ? "" : "[");
        for (std::size_t i = 0; i < band.polygons.size(); ++i) {
            out_.Append(i == 0 ? "" : ",");
            WritePolygon(band, band.polygons[i]);
        }
        out_.Append(isOne ? "" : "]");
        End();
    }

    void WritePolygon(const LevelBand& band, const BandPolygon& polygon) {
        out_.Append("[");
        WriteRing(band.VerticesOf(polygon.outer), true, band.low);
        for (const RegionRing& hole : polygon.holes) {
            out_.Append(",");
            WriteRing(band.VerticesOf(hole), true, band.low);
        }
        out_.Append("]");
    }

    void WriteTriangles() {
        if (!Wants(VectorPart::Triangles)) {
            return;
        }
        const PositionTexts positions(content_.points);
        for (std::size_t t = 0; t < content_.triangles.size(); ++t) {
            positions.LookAhead(content_.triangles, t);
            WriteTriangle(content_.triangles[t], positions);
        }
    }

    void WriteTriangle(const Triangle& triangle, const PositionTexts& positions) {
        std::string& text = Begin("triangle");
        BeginGeometry("Polygon");
        char before = '[';
        text += '[';
        for (const int corner : {1, 2, 3, 1}) {
            text += std::exchange(before, ',');
            text += positions.Of(triangle.Vertex(corner));
        }
        text += "]]";
        End();
    }

    void WriteLines(VectorPart part, std::string_view kind) {
        for (const SpaceLine& line : LinesOf(content_, part)) {
            WriteLine(kind, line);
        }
    }

    void WriteLine(std::string_view kind, const SpaceLine& line) {
        std::string& text = Begin(kind);
        if (!line.name.empty()) {
            text += ",\"name\":";
            AppendQuoted(text, CleanText(line.name));
        }
        text += line.closed ? ",\"closed\":true" : ",\"closed\":false";
        BeginGeometry("LineString");
        const std::size_t count = line.vertices.size() + (line.closed ? 1 : 0);
        for (std::size_t i = 0; i < count; ++i) {
            out_.Append(i == 0 ? "[" : ",");
            AppendPosition(text, line.vertices[i % line.vertices.size()]);
        }
        out_.Append("]");
        End();
    }

    void WritePoints() {
        if (Wants(VectorPart::Points)) {
            for (Index i = 1; i <= static_cast<Index>(content_.PointCount()); ++i) {
                WritePoint(i);
            }
        }
    }

    void WritePoint(Index point) {
        std::string& text = Begin("point");
        if (Wants(VectorPart::Numbers)) {
            text += ",\"number\":";
            AppendQuoted(text, CleanText(content_.NameOf(point)));
        }
        if (Wants(VectorPart::Codes) && !content_.CodeOf(point).empty()) {
            text += ",\"code\":";
            AppendQuoted(text, CleanText(content_.CodeOf(point)));
        }
        text += ",\"elevation\":";
        AppendReal(text, content_.PointAt(point).z);
        BeginGeometry("Point");
        AppendPosition(text, content_.PointAt(point));
        End();
    }

    OutputFile& out_;
    const VectorContent& content_;
    std::vector<std::string>& remarks_;
    std::string heightText_; // of the ring at hand
    std::int64_t features_ = 0;
};

} // namespace

VectorParts GeoJsonParts() {
    return {VectorPart::Contours,  VectorPart::IndexContours, VectorPart::Bands,
            VectorPart::Triangles, VectorPart::Points,        VectorPart::Numbers,
            VectorPart::Codes,     VectorPart::Hull,          VectorPart::Boundary,
            VectorPart::Breaklines};
}

VectorParts UsualGeoJsonParts() {
    return {VectorPart::Contours, VectorPart::IndexContours, VectorPart::Points,
            VectorPart::Numbers,  VectorPart::Codes,         VectorPart::Hull,
            VectorPart::Boundary, VectorPart::Breaklines};
}

void WriteGeoJson(OutputFile& out, const VectorContent& content, const VectorOptions& /*options*/,
                  std::vector<std::string>& remarks) {
    Writer(out, content, remarks).Write();
}

} // namespace terravo
