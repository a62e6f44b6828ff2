// What is wrong with a survey as a whole: its columns, its units, points far from all others.
//
// Data: the coordinates. Method: quantiles of up to 10 000 points spread evenly tell where the
// survey is and how large, whatever a few wrong points say.
#pragma once

#include "survey/check/Finding.h"

namespace terravo {

/// Where the bulk of some values lies.
struct Bulk {
    double low = 0;  // 5 % of the values lie below
    double high = 0; // 5 % above
    double lowerQuarter = 0;
    double upperQuarter = 0;
};

/// @param count  of the values that count, at least 1.
Bulk BulkOf(const Array1<double>& values, Index count);

/// Looks for columns that are constant or count the lines, and for degrees in place of metres.
void CheckColumns(const PointSet& points, FindingCollector& findings);

/// Looks for points far outside the rest.
/// @return for each point, whether it is one.
Array1<char> FindLonePoints(const PointSet& points, FindingCollector& findings);

} // namespace terravo
