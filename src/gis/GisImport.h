// Points out of files that go through the library terravo_gis.
//
// Data: the source, the plan, the points with what is known of them. Method: the source is listed,
// the plan is judged, the library reads; what comes of it is told as of any point file.
#pragma once

#include "gis/GisPlan.h"
#include "survey/import/PointImport.h"

#include <string>
#include <vector>

namespace terravo {

/// Whether a file, or a folder of Shapefiles, is to be read through the library: by its first
/// bytes, and by its ending where these tell nothing.
bool IsGisFile(const std::string& path);

struct GisListing {
    GisSource source;
    std::optional<ReadFailure> failure;
};

/// What the file holds.
GisListing ListGisFile(const std::string& path, const StopToken& stop = StopToken());

struct GisOutcome {
    ImportOutcome import;
    std::vector<SpaceLine> lines; // their vertices are among the points
    std::vector<SpaceLine> rings; // of polygons, likewise
    std::int64_t repeatedVertices = 0;
};

/// Reads a source by a plan.
/// @param source  listed from the file.
/// @param[out] points  all that was read, with the name of the file; the folder stays. Left as they
///                     were after a failure.
GisOutcome ImportGis(const std::string& path, const GisSource& source, const GisPlan& plan,
                     PointSet& points, const StopToken& stop = StopToken());

/// Lists and reads. A plan with a fault is a failure that needs a choice.
GisOutcome ImportGis(const std::string& path, const GisPlan& plan, PointSet& points,
                     const StopToken& stop = StopToken());

} // namespace terravo
