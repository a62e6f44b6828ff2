#include "survey/import/FileKind.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace terravo {
namespace {

struct Signature {
    std::size_t offset;
    std::string_view bytes;
    const char* sentence;
};

using namespace std::string_view_literals;

constexpr const char* kSpreadsheet =
    "this is a spreadsheet; save its sheet as CSV or as text and open that";
constexpr const char* kPicture =
    "this is a picture, which holds no points; convert an elevation raster to an ESRI ASCII grid";
constexpr const char* kLasSentence =
    "this is a LAS or LAZ point cloud; convert it to a text of x, y, z and open that";
constexpr const char* kArchive = "this is an archive; unpack it and open the point file in it";
constexpr const char* kBinaryDxf =
    "this is a DXF drawing; export its points as a text of x, y, z and open that";

constexpr std::array kSignatures{
    Signature{0, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, kSpreadsheet},
    Signature{0, "LASF"sv, kLasSentence},
    Signature{0, "\x89PNG\r\n"sv, kPicture},
    Signature{0, "\xFF\xD8\xFF"sv, kPicture},
    Signature{0, "II*\0"sv, kPicture},
    Signature{0, "MM\0*"sv, kPicture},
    Signature{0, "II+\0"sv, kPicture},
    Signature{0, "GIF8"sv, kPicture},
    Signature{0, "%PDF-"sv, "this is a PDF document; open the file that its numbers come from"},
    Signature{0, "\0\0\x27\x0A\0\0\0\0"sv,
              "this is a shapefile; export its points as a text of x, y, z and open that"},
    Signature{0, "AutoCAD Binary DXF"sv, kBinaryDxf},
    Signature{0, "\x1F\x8B"sv, kArchive},
    Signature{0, "BZh"sv, kArchive},
    Signature{0, "7z\xBC\xAF\x27\x1C"sv, kArchive},
    Signature{0, "Rar!"sv, kArchive},
    Signature{0,
              "\xFD"
              "7zXZ\0"sv,
              kArchive},
    Signature{257, "ustar"sv, kArchive},
    Signature{0, "SQLite format 3\0"sv,
              "this is a database; export its points as a text of x, y, z and open that"},
    Signature{0, "CDF\x01"sv,
              "this is a NetCDF grid; convert it to an ESRI ASCII grid and open that"},
    Signature{0, "\x89HDF"sv, "this is an HDF file; convert its grid to an ESRI ASCII grid"},
    Signature{0, "DSBB"sv, "this is a binary grid; save it as an ASCII grid (DSAA) and open that"},
    Signature{0, "DSRB"sv, "this is a binary grid; save it as an ASCII grid (DSAA) and open that"},
};

// A zip is an office document when it says so near its start.
std::string SentenceOfZip(std::string_view head) {
    for (const std::string_view mark : {"xl/"sv, "opendocument.spreadsheet"sv}) {
        if (head.find(mark) != std::string_view::npos) {
            return kSpreadsheet;
        }
    }
    return kArchive;
}

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

// A drawing as text: group codes and values on lines of their own, first "0" and "SECTION".
bool IsDxf(std::string_view text) {
    constexpr std::string_view kSection = "SECTION";
    if (!text.starts_with('0') && !text.starts_with("999")) {
        return false;
    }
    const std::size_t section = text.substr(0, 2000).find(kSection);
    return section != std::string_view::npos && section > 0 &&
           (text[section - 1] == '\n' || text[section - 1] == '\r' || text[section - 1] == ' ');
}

bool IsMesh(std::string_view text) {
    const auto hasLine = [text](std::string_view begin) {
        return text.find("\n" + std::string(begin)) != std::string_view::npos;
    };
    const bool isObj = (text.starts_with("v ") || hasLine("v ")) &&
                       (hasLine("f ") || hasLine("vn ") || hasLine("vt "));
    return isObj || text.starts_with("ply\n") || text.starts_with("ply\r") ||
           text.starts_with("OFF\n") || text.starts_with("OFF\r");
}

bool IsGeoJson(std::string_view text) {
    return (text.starts_with('{') || text.starts_with('[')) &&
           (text.find("\"coordinates\"") != std::string_view::npos ||
            text.find("FeatureCollection") != std::string_view::npos);
}

bool IsKml(std::string_view text) {
    return text.starts_with('<') && text.find("<kml") != std::string_view::npos;
}

std::optional<std::string> MarkupOf(std::string_view text) {
    if (text.starts_with('{') || text.starts_with('[')) {
        if (IsGeoJson(text) || text.starts_with("{\"") || text.starts_with("[{") ||
            text.starts_with("{\n") || text.starts_with("{\r")) {
            return "this is a GeoJSON or other JSON file; export its points as a text of x, y, z "
                   "and open that";
        }
    }
    if (text.starts_with("<")) {
        if (text.find("LandXML") != std::string_view::npos) {
            return "this is a LandXML file; export its points as a text of x, y, z and open that";
        }
        return "this is an XML or HTML file; export its points as a text of x, y, z and open that";
    }
    return std::nullopt;
}

constexpr std::array kGisMarks{
    Signature{0, "II*\0"sv, nullptr},
    Signature{0, "MM\0*"sv, nullptr},
    Signature{0, "II+\0"sv, nullptr},
    Signature{0, "MM\0+"sv, nullptr},
    Signature{0, "\0\0\x27\x0A\0\0\0\0"sv, nullptr},
    Signature{68, "GPKG"sv, nullptr},
    Signature{68, "GP10"sv, nullptr},
    Signature{68, "GP11"sv, nullptr},
    Signature{0, "EHFA_HEADER_TAG"sv, nullptr},
    Signature{0, "UHL1"sv, nullptr},
    Signature{0, "DSBB"sv, nullptr},
    Signature{0, "DSRB"sv, nullptr},
};

bool HasMark(std::string_view head, const Signature& mark) {
    return head.size() >= mark.offset && head.substr(mark.offset).starts_with(mark.bytes);
}

// Four bytes a character, of which three are 0 where the text is ASCII.
bool IsUtf32(std::string_view head) {
    if (head.starts_with("\xFF\xFE\0\0"sv) || head.starts_with("\0\0\xFE\xFF"sv)) {
        return true;
    }
    constexpr std::size_t kLook = 4096;
    constexpr std::size_t kFewest = 16;
    const std::string_view text = head.substr(0, std::min(kLook, head.size() / 4 * 4));
    std::array<std::size_t, 4> zerosAt{};
    for (std::size_t i = 0; i < text.size(); ++i) {
        zerosAt[i % 4] += text[i] == '\0' ? 1 : 0;
    }
    const std::size_t all = text.size() / 4;
    const bool isInside = zerosAt[1] == all && zerosAt[2] == all;
    return text.size() >= kFewest && isInside &&
           ((zerosAt[0] == 0 && zerosAt[3] == all) || (zerosAt[3] == 0 && zerosAt[0] == all));
}

} // namespace

std::optional<std::string> ForeignFormatOf(std::string_view head, bool isUtf16) {
    if (IsUtf32(head)) {
        return "this is a UTF-32 text; save it as UTF-8 and open that";
    }
    for (const Signature& signature : kSignatures) {
        if (HasMark(head, signature)) {
            return signature.sentence;
        }
    }
    if (head.starts_with("PK\x03\x04")) {
        return SentenceOfZip(head);
    }
    if (head.starts_with("BM") && head.size() > 2 &&
        std::isprint(static_cast<unsigned char>(head[2])) == 0) {
        return kPicture;
    }
    if (!isUtf16 && head.find('\0') != std::string_view::npos) {
        if (head.starts_with("AC10")) {
            return "this is a CAD drawing; export its points as a text of x, y, z and open that";
        }
        return "this is a binary file, not a text of points";
    }
    const std::string_view text = WithoutBlanks(head);
    if (IsMesh(text)) {
        return "this is a mesh (OBJ, PLY or OFF); export its points as a text of x, y, z";
    }
    if (IsDxf(text)) {
        return kBinaryDxf;
    }
    return MarkupOf(text);
}

bool IsGisFormat(std::string_view head) {
    const std::string_view text = WithoutBlanks(head);
    return std::any_of(kGisMarks.begin(), kGisMarks.end(),
                       [head](const Signature& mark) { return HasMark(head, mark); }) ||
           (head.find('\0') == std::string_view::npos &&
            (IsDxf(text) || IsGeoJson(text) || IsKml(text)));
}

} // namespace terravo
