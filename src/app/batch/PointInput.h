// The points of a run, out of a text, a grid or a file that goes through GDAL.
//
// Data: the name of a file and what the call says of its reading. Method: a file is read when its
// reading is certain; else the run ends with a sentence that names the option which decides.
#pragma once

#include "app/batch/GisOptions.h"
#include "app/batch/ImportOptions.h"
#include "triangulation/TriangulatePoints.h"
#include "util/StopToken.h"

#include <string>

namespace terravo {

struct PointCall {
    std::string file;
    ImportCall import;
    GisPlan gis;             // of a file that goes through GDAL
    bool optionsHold = true; // else the options of the call say nothing of this file
};

/// Reads the points of a file.
/// @param[out] points  see ImportPoints.
/// @return without a failure, unless the file is empty. Throws RunFailure.
ImportOutcome ReadPointFile(const PointCall& call, PointSet& points, const StopToken& stop);

/// Throws RunFailure for points of a file that gave no triangles.
void RequireTriangles(const std::string& file, const PointSet& points,
                      const TriangulationOutcome& made);

} // namespace terravo
