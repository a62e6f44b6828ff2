#include "export/readback/CsvCheck.h"

#include "export/readback/ContentCheck.h"
#include "export/readback/CsvRecords.h"

#include <charconv>
#include <cmath>

namespace terravo {
namespace {

using Fields = std::vector<std::string_view>;

template <class Number>
Number NumberIn(std::string_view field) {
    Number value = 0;
    const char* const end = field.data() + field.size();
    const std::from_chars_result read = std::from_chars(field.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end) {
        throw CsvFault{"\"" + std::string(field) + "\" is not a number"};
    }
    return value;
}

// The contour whose vertices come.
struct OpenContour {
    double level = 0;
    std::size_t line = 0; // 0: none so far
    std::vector<SpacePoint> vertices;

    // A closed line ends where it begins.
    void TellTo(ContentCheck& check) {
        const bool closed = vertices.size() > 1 && vertices.front() == vertices.back();
        if (closed) {
            vertices.pop_back();
        }
        if (line > 0) {
            check.Contour(level, closed, std::nullopt, vertices);
        }
        vertices.clear();
    }
};

void TakeVertex(const Fields& fields, OpenContour& contour, ContentCheck& check) {
    const auto level = NumberIn<double>(fields[0]);
    const auto line = NumberIn<std::size_t>(fields[1]);
    if (line == contour.line + 1) {
        contour.TellTo(check);
        contour.level = level;
        contour.line = line;
    } else if (line != contour.line || level != contour.level) {
        throw CsvFault{"a vertex is none of the line before it nor of the next one"};
    }
    contour.vertices.push_back({NumberIn<double>(fields[2]), NumberIn<double>(fields[3]), level});
}

void TakePoint(const Fields& fields, ContentCheck& check) {
    check.Point(
        {NumberIn<double>(fields[1]), NumberIn<double>(fields[2]), NumberIn<double>(fields[3])},
        fields[0], fields[4]);
}

void TakeTriangle(const Fields& fields, ContentCheck& check) {
    check.CornerNumbers(
        {NumberIn<Index>(fields[0]), NumberIn<Index>(fields[1]), NumberIn<Index>(fields[2])});
}

void RequireNames(CsvRecords& records, const Fields& names) {
    Fields fields;
    if (!records.Next(fields) || fields != names) {
        throw CsvFault{"the columns have other names"};
    }
}

// Hands over each record behind the names of the columns, until a difference is known.
template <class Take>
void ReadRecords(const std::string& path, const Fields& names, const ContentCheck& check,
                 Take take) {
    CsvRecords records(path);
    try {
        RequireNames(records, names);
        Fields fields;
        while (!check.HasDifference() && records.Next(fields)) {
            if (fields.size() != names.size()) {
                throw CsvFault{"there are " + std::to_string(fields.size()) +
                               " fields instead of " + std::to_string(names.size())};
            }
            take(fields);
        }
    } catch (const CsvFault& fault) {
        throw CsvFault{"record " + std::to_string(records.Number()) + ": " + fault.sentence};
    }
}

template <class Read>
std::optional<std::string> DifferenceIn(ContentCheck& check, Read read) {
    try {
        read();
        return check.Finish();
    } catch (const CsvFault& fault) {
        return fault.sentence;
    }
}

} // namespace

std::optional<std::string> CheckCsvPoints(const std::string& path, const VectorContent& content,
                                          const VectorOptions& /*options*/) {
    ContentCheck check(content, {VectorPart::Points});
    return DifferenceIn(check, [&] {
        ReadRecords(path, {"number", "easting", "northing", "height", "code"}, check,
                    [&check](const Fields& fields) { TakePoint(fields, check); });
    });
}

std::optional<std::string> CheckCsvContours(const std::string& path, const VectorContent& content,
                                            const VectorOptions& /*options*/) {
    ContentCheck check(content,
                       content.parts.And({VectorPart::Contours, VectorPart::IndexContours}));
    return DifferenceIn(check, [&] {
        OpenContour contour;
        ReadRecords(path, {"level", "line", "x", "y"}, check,
                    [&](const Fields& fields) { TakeVertex(fields, contour, check); });
        contour.TellTo(check);
    });
}

std::optional<std::string> CheckCsvTriangles(const std::string& path, const VectorContent& content,
                                             const VectorOptions& /*options*/) {
    ContentCheck check(content, {VectorPart::Triangles});
    return DifferenceIn(check, [&] {
        ReadRecords(path, {"point1", "point2", "point3"}, check,
                    [&check](const Fields& fields) { TakeTriangle(fields, check); });
    });
}

} // namespace terravo
