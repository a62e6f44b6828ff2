// GeoPackages: a table a kind of content.
//
// Data: vector content. Method: one transaction round all tables.
#include "gis/module/AttributeTexts.h"
#include "gis/module/ContentTables.h"
#include "gis/module/CoordinateSystem.h"
#include "gis/module/GdalScope.h"
#include "gis/module/ModuleFunctions.h"

#include <gdal_priv.h>

namespace terravo {
namespace {

OGRLayer* CreateLayer(GDALDataset& file, const ContentTable& table, OGRSpatialReference& system) {
    OGRLayer* layer = file.CreateLayer(table.name, &system, table.geometry);
    for (const TableColumn& column : table.columns) {
        OGRFieldDefn field(column.name, column.type);
        field.SetSubType(column.isFlag ? OFSTBoolean : OFSTNone);
        if (layer == nullptr || layer->CreateField(&field) != OGRERR_NONE) {
            return nullptr;
        }
    }
    return layer;
}

} // namespace

void WriteGeoPackageFile(const std::string& path, const VectorContent& content,
                         std::vector<std::string>& remarks) {
    RequireFiniteNumbers(content, path);
    const GdalScope gdal;
    OGRSpatialReference system =
        content.epsg ? SystemOf(*content.epsg, path) : UndefinedPlaneSystem();
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("GPKG");
    GDALDatasetUniquePtr file(
        driver != nullptr ? driver->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr) : nullptr);
    if (!file || file->StartTransaction() != OGRERR_NONE) {
        gdal.Throw(path);
    }
    AttributeTexts texts;
    for (const ContentTable& table : TablesOf(content)) {
        OGRLayer* layer = CreateLayer(*file, table, system);
        if (layer == nullptr || !FillTable(table, content, texts, *layer)) {
            gdal.Throw(path);
        }
    }
    if (file->CommitTransaction() != OGRERR_NONE) {
        gdal.Throw(path);
    }
    file.reset(); // closes; what is refused now is a failure as well
    gdal.ThrowIfFailed(path);
    texts.TellIn(remarks);
}

} // namespace terravo
