#include "export/vector/LandXmlSurface.h"

#include "export/vector/CleanText.h"
#include "export/vector/VectorLines.h"
#include "export/vector/VectorNumber.h"
#include "export/vector/XmlText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace terravo {
namespace {

using VectorNumber::AppendReal;
using VectorNumber::AppendWhole;
using XmlText::AppendAttribute;
using XmlText::AppendPlace;

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

bool HasLines(const VectorContent& content, VectorPart part) {
    return !LinesOf(content, part).empty();
}

bool HasBoundaries(const VectorContent& content) {
    return HasLines(content, VectorPart::Hull) || HasLines(content, VectorPart::Boundary);
}

bool HasContours(const VectorContent& content) {
    return std::any_of(content.contours.begin(), content.contours.end(),
                       [&content](const VectorContour& c) { return content.Shows(c); });
}

class LineWriter {
public:
    LineWriter(OutputFile& out, const VectorContent& content) : out_(out), content_(content) {}

    void Write() {
        out_.Append("<SourceData>\n");
        if (HasBoundaries(content_)) {
            WriteBoundaries();
        }
        if (HasLines(content_, VectorPart::Breaklines)) {
            WriteBreaklines();
        }
        if (HasContours(content_)) {
            WriteContours();
        }
        out_.Append("</SourceData>\n");
    }

private:
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

    OutputFile& out_;
    const VectorContent& content_;
};

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

class FaceWriter {
public:
    FaceWriter(OutputFile& out, const VectorContent& content) : out_(out), content_(content) {}

    void Write() {
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

private:
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
};

} // namespace

bool HasLandXmlLines(const VectorContent& content) {
    return HasBoundaries(content) || HasLines(content, VectorPart::Breaklines) ||
           HasContours(content);
}

void WriteLandXmlLines(OutputFile& out, const VectorContent& content) {
    LineWriter(out, content).Write();
}

void WriteLandXmlFaces(OutputFile& out, const VectorContent& content) {
    FaceWriter(out, content).Write();
}

} // namespace terravo
