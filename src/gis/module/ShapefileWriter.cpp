// Folders of Shapefiles: a set of files a kind of content.
//
// Data: vector content. Method: the room that the shapes take is counted before anything is
// written; texts get columns as wide as the longest of them.
#include "gis/module/AttributeTexts.h"
#include "gis/module/ContentTables.h"
#include "gis/module/CoordinateSystem.h"
#include "gis/module/GdalScope.h"
#include "gis/module/ModuleFunctions.h"
#include "util/AppError.h"

#include <cpl_string.h>
#include <gdal_priv.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace terravo {
namespace {

constexpr int kMostTextBytes = 254;
constexpr int kNumberWidth = 24;
constexpr int kNumberDecimals = 15;
constexpr std::int64_t kHeader = 100;

// Head of a record, kind, bounds of x, y and z, counts.
constexpr std::int64_t kHeadOfShape = 8 + 4 + 32 + 8 + 16;
constexpr std::int64_t kPart = 4;
constexpr std::int64_t kSpaceVertex = 24;
constexpr std::int64_t kPlanVertex = 16;
constexpr std::int64_t kPointRecord = 8 + 4 + 24;

std::int64_t Size(const std::vector<SpaceLine>& lines) {
    std::int64_t bytes = 0;
    for (const SpaceLine& line : lines) {
        bytes += kHeadOfShape + kPart +
                 static_cast<std::int64_t>(line.vertices.size() + 1) * kSpaceVertex;
    }
    return bytes;
}

std::int64_t SizeOfContours(const VectorContent& content) {
    std::int64_t bytes = 0;
    for (const VectorContour& contour : content.contours) {
        if (content.Shows(contour)) {
            bytes +=
                kHeadOfShape + kPart +
                static_cast<std::int64_t>(contour.count + (contour.closed ? 1 : 0)) * kSpaceVertex;
        }
    }
    return bytes;
}

std::int64_t SizeOfBands(const VectorContent& content) {
    std::int64_t bytes = 0;
    for (const LevelBand& band : content.bands) {
        bytes += kHeadOfShape + static_cast<std::int64_t>(band.vertices.size()) * kPlanVertex;
    }
    return bytes;
}

// Bytes of the shapes of a table; a little more rather than less.
std::int64_t SizeOf(TableKind kind, const VectorContent& content) {
    switch (kind) {
    case TableKind::Contours:
        return SizeOfContours(content);
    case TableKind::Bands:
        return SizeOfBands(content);
    case TableKind::Triangles:
        return static_cast<std::int64_t>(content.triangles.size()) *
               (kHeadOfShape + kPart + 4 * kSpaceVertex);
    case TableKind::Points:
        return static_cast<std::int64_t>(content.PointCount()) * kPointRecord;
    case TableKind::Hull:
        return Size(content.hull);
    case TableKind::Boundary:
        return Size(content.boundary);
    case TableKind::Breaklines:
        return Size(content.breaklines);
    }
    return 0;
}

// The shapes of a set, before anything is written.
void RequireRoom(const ContentTable& table, const VectorContent& content, const std::string& folder,
                 std::int64_t mostBytes) {
    if (SizeOf(table.kind, content) + kHeader > mostBytes) {
        throw AppError(ErrorNumber::kDeviceIo, folder,
                       folder + ": " + table.name + ".shp would have more than " +
                           std::to_string(mostBytes) +
                           " bytes, which a Shapefile cannot hold; please write a GeoPackage.");
    }
}

// The width that the longest text of a column needs: each record is as long as that.
int WidthOf(const ContentTable& table, std::size_t column, const VectorContent& content) {
    std::size_t longest = 1;
    const auto include = [&longest](std::string_view text) {
        longest = std::max(longest, text.size());
    };
    if (table.kind == TableKind::Points) {
        for (Index point = 1; point <= static_cast<Index>(content.PointCount()); ++point) {
            column == 0 ? include(content.NameOf(point)) : include(content.CodeOf(point));
        }
    } else {
        for (const auto* lines : {&content.hull, &content.boundary, &content.breaklines}) {
            for (const SpaceLine& line : *lines) {
                include(line.name);
            }
        }
    }
    return static_cast<int>(std::min<std::size_t>(longest, kMostTextBytes));
}

void SetWidth(OGRFieldDefn& field, const ContentTable& table, std::size_t i,
              const VectorContent& content) {
    const TableColumn& column = table.columns[i];
    if (column.type == OFTReal) {
        field.SetWidth(kNumberWidth);
        field.SetPrecision(kNumberDecimals);
    } else if (column.type == OFTString) {
        field.SetWidth(WidthOf(table, i, content));
    } else if (column.isFlag) {
        field.SetWidth(1);
    }
}

OGRLayer* CreateLayer(GDALDataset& folder, const ContentTable& table, const VectorContent& content,
                      OGRSpatialReference* system) {
    CPLStringList options;
    options.SetNameValue("ENCODING", "UTF-8");
    options.SetNameValue("2GB_LIMIT", "YES");
    options.SetNameValue("DBF_DATE_LAST_UPDATE", "2000-01-01");
    OGRLayer* layer = folder.CreateLayer(table.name, system, table.geometry, options.List());
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        OGRFieldDefn field(table.columns[i].shortName, table.columns[i].type);
        SetWidth(field, table, i, content);
        if (layer == nullptr || layer->CreateField(&field) != OGRERR_NONE) {
            return nullptr;
        }
    }
    return layer;
}

} // namespace

void WriteShapefileSets(const std::string& folder, const VectorContent& content,
                        std::int64_t mostBytes, std::vector<std::string>& remarks) {
    RequireFiniteNumbers(content, folder);
    const std::vector<ContentTable> tables = TablesOf(content);
    for (const ContentTable& table : tables) {
        RequireRoom(table, content, folder, mostBytes);
    }
    const GdalScope gdal;
    std::optional<OGRSpatialReference> system;
    if (content.epsg) {
        system = SystemOf(*content.epsg, folder);
    }
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("ESRI Shapefile");
    GDALDatasetUniquePtr sets(driver != nullptr
                                  ? driver->Create(folder.c_str(), 0, 0, 0, GDT_Unknown, nullptr)
                                  : nullptr);
    if (!sets) {
        gdal.Throw(folder);
    }
    AttributeTexts texts(kMostTextBytes);
    for (const ContentTable& table : tables) {
        OGRLayer* layer = CreateLayer(*sets, table, content, system ? &*system : nullptr);
        if (layer == nullptr || !FillTable(table, content, texts, *layer)) {
            gdal.Throw(folder);
        }
    }
    sets.reset();
    gdal.ThrowIfFailed(folder);
    texts.TellIn(remarks);
}

} // namespace terravo
