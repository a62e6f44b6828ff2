// The functions of the library's table; GisFunctions.h tells what they do.
#pragma once

#include "gis/GisFunctions.h"

namespace terravo {

void WriteGeoPackageFile(const std::string& path, const VectorContent& content,
                         std::vector<std::string>& remarks);
void WriteShapefileSets(const std::string& folder, const VectorContent& content,
                        std::int64_t mostBytes, std::vector<std::string>& remarks);
GisSource ListSource(const std::string& path, const StopToken& stop);
GisContent ReadSource(const std::string& path, const GisWish& wish, const StopToken& stop);

} // namespace terravo
