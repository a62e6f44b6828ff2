// The library terravo_gis, loaded when a format of it is asked for.
//
// Data: the table of its functions, kept for the rest of the run. Method: GDAL takes a while to
// load and brings many libraries along, so it is no part of the programs; the library that links it
// lies beside the program in a build, and in ../lib/terravo when it is installed.
#pragma once

#include "gis/GisFunctions.h"

#include <string>

namespace terravo {

/// The functions of the library, loaded at the first call.
/// Throws AppError with a sentence that names what is to be installed, to stand behind the name of
/// a file.
const GisFunctions& LoadGis();

/// The same with a library that lies in that folder or in ../lib/terravo of it; never kept.
const GisFunctions& LoadGisFrom(const std::string& programFolder);

} // namespace terravo
