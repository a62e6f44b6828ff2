#include "export/vector/LandXmlWriter.h"

#include "export/vector/CleanText.h"
#include "export/vector/FewRemarks.h"
#include "export/vector/LandXmlNames.h"
#include "export/vector/VectorLines.h"
#include "export/vector/VectorNumber.h"
#include "util/AppError.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace terravo {
namespace {

using VectorNumber::AppendReal;
using VectorNumber::AppendWhole;

constexpr std::string_view kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<LandXML xmlns=\"http://www.landxml.org/schema/LandXML-1.2\""
    " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
    " xsi:schemaLocation=\"http://www.landxml.org/schema/LandXML-1.2"
    " http://www.landxml.org/schema/LandXML-1.2/LandXML-1.2.xsd\""
    " version=\"1.2\" date=\"2000-01-01\" time=\"00:00:00\" language=\"English\""
    " readOnly=\"false\">\n";

// Heights have a unit of their own, which is metres where none is said.
std::string_view UnitsOf(LengthUnit unit) {
    switch (unit) {
    case LengthUnit::Metre:
        break;
    case LengthUnit::Foot:
        return R"(<Imperial linearUnit="foot" areaUnit="squareFoot" volumeUnit="cubicFeet")"
               R"( temperatureUnit="fahrenheit" pressureUnit="inHG")"
               R"( angularUnit="decimal degrees" directionUnit="decimal degrees")"
               R"( elevationUnit="feet"/>)";
    case LengthUnit::UsSurveyFoot:
        return R"(<Imperial linearUnit="USSurveyFoot" areaUnit="squareFoot")"
               R"( volumeUnit="cubicFeet" temperatureUnit="fahrenheit" pressureUnit="inHG")"
               R"( angularUnit="decimal degrees" directionUnit="decimal degrees")"
               R"( elevationUnit="feet"/>)";
    }
    return R"(<Metric linearUnit="meter" areaUnit="squareMeter" volumeUnit="cubicMeter")"
           R"( temperatureUnit="celsius" pressureUnit="milliBars")"
           R"( angularUnit="decimal degrees" directionUnit="decimal degrees")"
           R"( elevationUnit="meter"/>)";
}

void AppendEscaped(std::string& out, std::string_view text) {
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
}

void AppendAttribute(std::string& out, std::string_view name, std::string_view value) {
    (out += ' ').append(name) += "=\"";
    AppendEscaped(out, value);
    out += '"';
}

// An area beyond the largest double is left out.
void AppendAttribute(std::string& out, std::string_view name, double value) {
    if (std::isfinite(value)) {
        (out += ' ').append(name) += "=\"";
        AppendReal(out, value);
        out += '"';
    }
}

void AppendPlace(std::string& out, double easting, double northing) {
    AppendReal(out, northing);
    out += ' ';
    AppendReal(out, easting);
}

void AppendPlace(std::string& out, const SpacePoint& p) {
    AppendPlace(out, p.x, p.y);
    out += ' ';
    AppendReal(out, p.z);
}

void AppendTriple(std::string& out, const std::array<Index, 3>& numbers) {
    AppendWhole(out, numbers[0]);
    out += ' ';
    AppendWhole(out, numbers[1]);
    out += ' ';
    AppendWhole(out, numbers[2]);
}

struct SurfaceMeasure {
    double planArea = 0;
    double area = 0;
    double highest = -HUGE_VAL;
    double lowest = HUGE_VAL;
};

SurfaceMeasure Measure(const VectorContent& content) {
    SurfaceMeasure measure;
    for (const Triangle& triangle : content.triangles) {
        const SpacePoint& a = content.PointAt(triangle.vertices[0]);
        const SpacePoint& b = content.PointAt(triangle.vertices[1]);
        const SpacePoint& c = content.PointAt(triangle.vertices[2]);
        const SpacePoint u{b.x - a.x, b.y - a.y, b.z - a.z};
        const SpacePoint v{c.x - a.x, c.y - a.y, c.z - a.z};
        const SpacePoint n{u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
        measure.planArea += n.z / 2;
        measure.area += std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z) / 2;
        measure.highest = std::max({measure.highest, a.z, b.z, c.z});
        measure.lowest = std::min({measure.lowest, a.z, b.z, c.z});
    }
    return measure;
}

// By the parity of the edges to the right of the place.
bool IsInside(const SpacePoint& place, const SpaceLine& ring) {
    bool inside = false;
    const std::vector<SpacePoint>& v = ring.vertices;
    for (std::size_t i = 0, j = v.size() - 1; i < v.size(); j = i++) {
        if ((v[i].y > place.y) != (v[j].y > place.y) &&
            place.x < v[j].x + (place.y - v[j].y) / (v[i].y - v[j].y) * (v[i].x - v[j].x)) {
            inside = !inside;
        }
    }
    return inside;
}

// Boundaries may run either way round: a ring within an odd number of others is a hole.
bool IsHole(const SpaceLine& ring, const std::vector<SpaceLine>& rings) {
    return std::count_if(rings.begin(), rings.end(),
                         [&ring](const SpaceLine& other) {
                             return &other != &ring && IsInside(ring.vertices.front(), other);
                         }) %
               2 ==
           1;
}

// The hull has the surface on its left.
bool IsClockwise(const SpaceLine& ring) {
    const std::vector<SpacePoint>& v = ring.vertices;
    double area = 0;
    for (std::size_t i = 2; i < v.size(); ++i) {
        area +=
            (v[i - 1].x - v[0].x) * (v[i].y - v[0].y) - (v[i].x - v[0].x) * (v[i - 1].y - v[0].y);
    }
    return area < 0;
}

class Writer {
public:
    Writer(OutputFile& out, const VectorContent& content, std::vector<std::string>& remarks)
        : out_(out), content_(content), remarks_(remarks) {}

    void Write() {
        RefuseWhatDoesNotFit();
        WriteHead();
        if (HasPoints()) {
            WritePoints();
        }
        if (HasSurface() || HasSource()) {
            WriteSurface();
        }
        out_.Append("</LandXML>\n");
    }

private:
    [[noreturn]] static void Refuse(const std::string& sentence) {
        throw AppError(ErrorNumber::kInvalidCall, "LandXML", sentence);
    }
    [[nodiscard]] bool Wants(VectorPart part) const { return content_.parts.Has(part); }

    [[nodiscard]] bool HasPoints() const {
        return Wants(VectorPart::Points) && !content_.points.empty();
    }
    [[nodiscard]] bool HasSurface() const { return Wants(VectorPart::Triangles); }
    [[nodiscard]] bool HasContours() const {
        return std::any_of(content_.contours.begin(), content_.contours.end(),
                           [this](const VectorContour& c) { return content_.Shows(c); });
    }
    [[nodiscard]] bool HasLines(VectorPart part) const { return !LinesOf(content_, part).empty(); }
    [[nodiscard]] bool HasBoundaries() const {
        return HasLines(VectorPart::Hull) || HasLines(VectorPart::Boundary);
    }
    [[nodiscard]] bool HasSource() const {
        return HasBoundaries() || HasLines(VectorPart::Breaklines) || HasContours();
    }

    void RefuseWhatDoesNotFit() const {
        if (HasSurface() && content_.triangles.empty()) {
            Refuse("There are no triangles, and a LandXML surface needs one at least.");
        }
        if (!HasSurface() && !HasPoints() && !HasSource()) {
            Refuse("There is nothing that a LandXML file can hold.");
        }
        if (HasShortLine(content_)) {
            Refuse("A line has fewer than two vertices, which LandXML cannot hold.");
        }
    }

    void WriteHead() {
        std::string& text = out_.Buffer();
        text += kHead;
        (text += "<Units>").append(UnitsOf(content_.unit)) += "</Units>\n";
        if (content_.epsg) {
            const std::string code = std::to_string(*content_.epsg);
            text += "<CoordinateSystem";
            AppendAttribute(text, "epsgCode", code);
            AppendAttribute(text, "name", "EPSG:" + code);
            text += "/>\n";
        }
        text += "<Project";
        AppendAttribute(text, "name", CleanText(content_.name));
        text += "/>\n<Application name=\"Terravo\"/>\n";
    }

    void WritePoints() {
        const PointNames names(content_);
        TellChanged(names);
        out_.Append("<CgPoints>\n");
        for (Index i = 1; i <= static_cast<Index>(content_.points.size()); ++i) {
            std::string& text = out_.Buffer();
            text += "<CgPoint";
            AppendAttribute(text, "name", names.Of(i));
            if (Wants(VectorPart::Codes) && !content_.CodeOf(i).empty()) {
                AppendAttribute(text, "desc", CleanText(content_.CodeOf(i)));
            }
            text += '>';
            AppendPlace(text, content_.PointAt(i));
            out_.Append("</CgPoint>\n");
        }
        out_.Append("</CgPoints>\n");
    }

    void TellChanged(const PointNames& names) {
        FewRemarks few(remarks_, "more points.");
        for (const auto& [point, name] : names.Changed()) {
            few.Add("Point " + std::to_string(point) + " is named \"" + name +
                    "\" in the LandXML file instead of \"" + CleanText(content_.NameOf(point)) +
                    "\".");
        }
        few.Finish();
    }

    void WriteSurface() {
        const std::string name = SurfaceNameOf(content_);
        const std::string given = CleanText(content_.name);
        if (name != given) {
            remarks_.push_back("The surface in the LandXML file is named \"" + name +
                               "\" instead of \"" + given + "\".");
        }
        std::string& text = out_.Buffer();
        text += "<Surfaces>\n<Surface";
        AppendAttribute(text, "name", name);
        text += ">\n";
        if (HasSource()) {
            WriteSource();
        }
        if (HasSurface()) {
            WriteDefinition();
        }
        out_.Append("</Surface>\n</Surfaces>\n");
    }

    void WriteSource() {
        out_.Append("<SourceData>\n");
        if (HasBoundaries()) {
            WriteBoundaries();
        }
        if (HasLines(VectorPart::Breaklines)) {
            WriteBreaklines();
        }
        if (HasContours()) {
            WriteContours();
        }
        out_.Append("</SourceData>\n");
    }

    void WriteBoundaries() {
        out_.Append("<Boundaries>\n");
        std::size_t place = 0;
        for (const SpaceLine& ring : LinesOf(content_, VectorPart::Hull)) {
            WriteBoundary("Hull", ++place, ring, IsClockwise(ring));
        }
        place = 0;
        for (const SpaceLine& ring : LinesOf(content_, VectorPart::Boundary)) {
            WriteBoundary("Boundary", ++place, ring, IsHole(ring, content_.boundary));
        }
        out_.Append("</Boundaries>\n");
    }

    // The description tells the two kinds apart, whatever their names.
    void WriteBoundary(const char* kind, std::size_t place, const SpaceLine& line, bool isHole) {
        std::string& text = out_.Buffer();
        text += "<Boundary";
        AppendAttribute(text, "bndType", isHole ? "void" : "outer");
        text += " edgeTrim=\"true\"";
        AppendAttribute(text, "name", NameOf(line, kind, place));
        AppendAttribute(text, "desc", kind);
        text += '>';
        WriteList(line);
        out_.Append("</Boundary>\n");
    }

    void WriteBreaklines() {
        out_.Append("<Breaklines>\n");
        std::size_t place = 0;
        for (const SpaceLine& line : content_.breaklines) {
            std::string& text = out_.Buffer();
            text += "<Breakline brkType=\"standard\"";
            AppendAttribute(text, "name", NameOf(line, "Breakline", ++place));
            text += '>';
            WriteList(line);
            out_.Append("</Breakline>\n");
        }
        out_.Append("</Breaklines>\n");
    }

    static std::string NameOf(const SpaceLine& line, const char* kind, std::size_t place) {
        return line.name.empty() ? kind + (" " + std::to_string(place)) : CleanText(line.name);
    }

    void WriteList(const SpaceLine& line) {
        out_.Append("<PntList3D>");
        const std::size_t count = line.vertices.size() + (line.closed ? 1 : 0);
        for (std::size_t i = 0; i < count; ++i) {
            out_.Append(i == 0 ? "" : " ");
            AppendPlace(out_.Buffer(), line.vertices[i % line.vertices.size()]);
        }
        out_.Append("</PntList3D>");
    }

    void WriteContours() {
        out_.Append("<Contours>\n");
        for (const VectorContour& contour : content_.contours) {
            if (content_.Shows(contour)) {
                WriteContour(contour);
            }
        }
        out_.Append("</Contours>\n");
    }

    void WriteContour(const VectorContour& contour) {
        std::string& text = out_.Buffer();
        text += "<Contour elev=\"";
        AppendReal(text, content_.LevelOf(contour).value);
        text += "\"><PntList2D>";
        const std::span<const PlanPoint> places = content_.VerticesOf(contour);
        const std::size_t count = places.size() + (contour.closed ? 1 : 0);
        for (std::size_t i = 0; i < count; ++i) {
            const PlanPoint& place = places[i % places.size()];
            out_.Append(i == 0 ? "" : " ");
            AppendPlace(text, place.x, place.y);
        }
        out_.Append("</PntList2D></Contour>\n");
    }

    void WriteDefinition() {
        const SurfaceMeasure measure = Measure(content_);
        std::string& text = out_.Buffer();
        text += "<Definition surfType=\"TIN\"";
        AppendAttribute(text, "area2DSurf", measure.planArea);
        AppendAttribute(text, "area3DSurf", measure.area);
        AppendAttribute(text, "elevMax", measure.highest);
        AppendAttribute(text, "elevMin", measure.lowest);
        text += ">\n";
        WriteSurfacePoints();
        WriteFaces();
        out_.Append("</Definition>\n");
    }

    // Readers keep points that no face uses, so those are left out.
    void WriteSurfacePoints() {
        std::vector<bool> used(content_.points.size());
        for (const Triangle& triangle : content_.triangles) {
            for (const Index corner : triangle.vertices) {
                used[static_cast<std::size_t>(corner) - 1] = true;
            }
        }
        out_.Append("<Pnts>\n");
        for (std::size_t i = 0; i < used.size(); ++i) {
            if (used[i]) {
                std::string& text = out_.Buffer();
                text += "<P id=\"";
                AppendWhole(text, static_cast<std::int64_t>(i) + 1);
                text += "\">";
                AppendPlace(text, content_.points[i]);
                out_.Append("</P>\n");
            }
        }
        out_.Append("</Pnts>\n");
    }

    void WriteFaces() {
        out_.Append("<Faces>\n");
        for (const Triangle& triangle : content_.triangles) {
            std::string& text = out_.Buffer();
            text += "<F n=\"";
            AppendTriple(text, triangle.neighbours);
            text += "\">";
            AppendTriple(text, triangle.vertices);
            out_.Append("</F>\n");
        }
        out_.Append("</Faces>\n");
    }

    OutputFile& out_;
    const VectorContent& content_;
    std::vector<std::string>& remarks_;
};

} // namespace

VectorParts LandXmlParts() {
    return {VectorPart::Contours, VectorPart::IndexContours, VectorPart::Triangles,
            VectorPart::Points,   VectorPart::Numbers,       VectorPart::Codes,
            VectorPart::Hull,     VectorPart::Boundary,      VectorPart::Breaklines};
}

VectorParts UsualLandXmlParts() {
    return {VectorPart::Triangles, VectorPart::Points,   VectorPart::Numbers,   VectorPart::Codes,
            VectorPart::Hull,      VectorPart::Boundary, VectorPart::Breaklines};
}

void WriteLandXml(OutputFile& out, const VectorContent& content, const VectorOptions& /*options*/,
                  std::vector<std::string>& remarks) {
    Writer(out, content, remarks).Write();
}

} // namespace terravo
