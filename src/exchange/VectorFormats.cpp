#include "exchange/VectorFormats.h"

#include "export/readback/CsvCheck.h"
#include "export/readback/DxfCheck.h"
#include "export/readback/GeoJsonReadback.h"
#include "export/readback/LandXmlReadback.h"
#include "export/vector/CsvWriter.h"
#include "export/vector/DxfLayers.h"
#include "export/vector/DxfWriter.h"
#include "export/vector/GeoJsonWriter.h"
#include "export/vector/LandXmlWriter.h"
#include "export/vector/MeshFormats.h"
#include "gis/GisExport.h"

#include <algorithm>
#include <vector>

namespace terravo {
namespace {

const VectorParts kUsualDxfParts{
    VectorPart::Contours, VectorPart::IndexContours, VectorPart::Labels,  VectorPart::Points,
    VectorPart::Numbers,  VectorPart::Codes,         VectorPart::Heights, VectorPart::Hull};
const VectorParts kUsualGisParts{VectorPart::Contours, VectorPart::IndexContours,
                                 VectorPart::Points,   VectorPart::Numbers,
                                 VectorPart::Codes,    VectorPart::Hull};

} // namespace

std::span<const VectorFormat> VectorFormats() {
    static const std::vector<VectorFormat> kFormats{
        {.option = "dxf",
         .name = "DXF",
         .extension = "dxf",
         .purpose = Text::PurposeCad,
         .help = "Write contours, points and more as a DXF drawing for CAD.",
         .known = DxfParts(),
         .usual = kUsualDxfParts,
         .write = WriteDxf,
         .check = CheckDxf},
        {.option = "landxml",
         .name = "LandXML",
         .extension = "xml",
         .purpose = Text::PurposeSurface,
         .help = "Write the surface and the points as LandXML.",
         .known = LandXmlParts(),
         .usual = UsualLandXmlParts(),
         .write = WriteLandXml,
         .check = CheckLandXml,
         .isOfTriangles = true},
        {.option = "geojson",
         .name = "GeoJSON",
         .extension = "geojson",
         .purpose = Text::PurposeMapData,
         .help = "Write contours, points and more as GeoJSON.",
         .known = GeoJsonParts(),
         .usual = UsualGeoJsonParts(),
         .write = WriteGeoJson,
         .check = CheckGeoJson},
        {.option = "csv",
         .name = "CSV",
         .extension = "csv",
         .purpose = Text::PurposePointList,
         .help = "Write the points as a table: number, easting, northing, height, code.",
         .known = CsvPointParts(),
         .usual = CsvPointParts(),
         .write = WriteCsvPoints,
         .check = CheckCsvPoints},
        {.option = "contours-csv",
         .name = "CSV",
         .extension = "csv",
         .purpose = Text::PurposeVertexList,
         .help = "Write the vertices of the contours as a table.",
         .known = CsvContourParts(),
         .usual = CsvContourParts(),
         .write = WriteCsvContours,
         .check = CheckCsvContours},
        {.option = "triangles-csv",
         .name = "CSV",
         .extension = "csv",
         .purpose = Text::PurposeTriangleList,
         .help = "Write the point numbers of the triangles as a table.",
         .known = CsvTriangleParts(),
         .usual = CsvTriangleParts(),
         .write = WriteCsvTriangles,
         .check = CheckCsvTriangles},
        {.option = "obj",
         .name = "OBJ",
         .extension = "obj",
         .purpose = Text::PurposeObject,
         .help = "Write the triangles as an OBJ object, relative to an origin that is told.",
         .known = MeshParts(),
         .usual = MeshParts(),
         .write = WriteObj},
        {.option = "ply",
         .name = "PLY",
         .extension = "ply",
         .purpose = Text::PurposeObject,
         .help = "Write the triangles as a binary PLY object, relative to an origin that is told.",
         .known = MeshParts(),
         .usual = MeshParts(),
         .write = WritePly},
        {.option = "stl",
         .name = "STL",
         .extension = "stl",
         .purpose = Text::PurposePrint3D,
         .help = "Write the triangles as a binary STL object, relative to an origin that is told.",
         .known = MeshParts(),
         .usual = MeshParts(),
         .write = WriteStl},
        {.option = "gpkg",
         .name = "GeoPackage",
         .extension = "gpkg",
         .purpose = Text::PurposeGisDatabase,
         .help = "Write everything as layers of a GeoPackage; needs GDAL.",
         .known = GisParts(),
         .usual = kUsualGisParts,
         .write =
             [](OutputFile& out, const VectorContent& content, const VectorOptions& /*options*/,
                std::vector<std::string>& remarks) { WriteGeoPackage(out, content, remarks); }},
        {.option = "shp",
         .name = "Shapefile",
         .purpose = Text::PurposeGisFolder,
         .help = "Write everything as Shapefiles into a folder; needs GDAL.",
         .known = GisParts(),
         .usual = kUsualGisParts,
         .writeFolder = WriteShapefiles},
    };
    return kFormats;
}

const VectorFormat* VectorFormatOf(std::string_view option) {
    const std::span<const VectorFormat> formats = VectorFormats();
    const auto found = std::find_if(formats.begin(), formats.end(),
                                    [&](const VectorFormat& f) { return f.option == option; });
    return found == formats.end() ? nullptr : &*found;
}

} // namespace terravo
