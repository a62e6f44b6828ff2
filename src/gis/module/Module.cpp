// The library's entry: its table of functions.
#include "gis/module/ModuleFunctions.h"

extern "C" [[gnu::visibility("default")]] const terravo::GisFunctions* TerravoGisFunctions() {
    static const terravo::GisFunctions functions{
        .writeGeoPackage = terravo::WriteGeoPackageFile,
        .writeShapefiles = terravo::WriteShapefileSets,
        .list = terravo::ListSource,
        .read = terravo::ReadSource,
    };
    return &functions;
}
