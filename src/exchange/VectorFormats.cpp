#include "exchange/VectorFormats.h"

#include "export/readback/DxfCheck.h"
#include "export/vector/DxfLayers.h"
#include "export/vector/DxfWriter.h"
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
