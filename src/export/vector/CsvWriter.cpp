#include "export/vector/CsvWriter.h"

#include "export/vector/CsvField.h"
#include "export/vector/VectorNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>

namespace terravo {
namespace {

// A field of a number is read up to this length by most programs, this one included.
constexpr std::size_t kLongestNumber = 40;

void AppendNumber(std::string& out, double value) {
    const std::size_t begin = out.size();
    VectorNumber::AppendShort(out, value);
    if (out.size() - begin > kLongestNumber) {
        std::array<char, 32> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                       std::chars_format::scientific);
        out.erase(begin);
        out.append(digits.data(), end.ptr);
    }
}

template <class Integer>
void AppendCount(std::string& out, Integer count) {
    std::array<char, 24> digits{};
    out.append(digits.data(),
               std::to_chars(digits.data(), digits.data() + digits.size(), count).ptr);
}

} // namespace

VectorParts CsvPointParts() {
    return {VectorPart::Points, VectorPart::Numbers, VectorPart::Codes};
}

VectorParts CsvContourParts() {
    return {VectorPart::Contours, VectorPart::IndexContours};
}

VectorParts CsvTriangleParts() {
    return {VectorPart::Triangles};
}

void WriteCsvPoints(OutputFile& out, const VectorContent& content, const VectorOptions& /*options*/,
                    std::vector<std::string>& /*remarks*/) {
    std::string& text = out.Buffer();
    text += "number,easting,northing,height,code\n";
    for (Index i = 1; i <= static_cast<Index>(content.PointCount()); ++i) {
        const SpacePoint& p = content.PointAt(i);
        AppendCsvField(text, content.NameOf(i));
        for (const double value : {p.x, p.y, p.z}) {
            text += ',';
            AppendNumber(text, value);
        }
        text += ',';
        AppendCsvField(text, content.CodeOf(i));
        text += '\n';
        out.FlushWhenFull();
    }
}

void WriteCsvContours(OutputFile& out, const VectorContent& content,
                      const VectorOptions& /*options*/, std::vector<std::string>& /*remarks*/) {
    std::string& text = out.Buffer();
    text += "level,line,x,y\n";
    std::size_t line = 0;
    std::string head; // of each record of a line
    for (const VectorContour& contour : content.contours) {
        if (!content.Shows(contour)) {
            continue;
        }
        head.clear();
        AppendNumber(head, content.LevelOf(contour).value);
        head += ',';
        AppendCount(head, ++line);
        head += ',';
        const auto add = [&](const PlanPoint& p) {
            text += head;
            AppendNumber(text, p.x);
            text += ',';
            AppendNumber(text, p.y);
            text += '\n';
            out.FlushWhenFull();
        };
        const std::span<const PlanPoint> vertices = content.VerticesOf(contour);
        std::for_each(vertices.begin(), vertices.end(), add);
        if (contour.closed) {
            add(vertices.front());
        }
    }
}

void WriteCsvTriangles(OutputFile& out, const VectorContent& content,
                       const VectorOptions& /*options*/, std::vector<std::string>& /*remarks*/) {
    std::string& text = out.Buffer();
    text += "point1,point2,point3\n";
    for (const Triangle& triangle : content.triangles) {
        for (const Index point : triangle.vertices) {
            AppendCount(text, point);
            text += ',';
        }
        text.back() = '\n';
        out.FlushWhenFull();
    }
}

} // namespace terravo
