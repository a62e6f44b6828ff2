// The check of a survey: what in its points is likely to be wrong.
//
// Data: the points, their triangulation, the report of the reading. Method: columns and extents are
// looked at as a whole; repeats are found by sorting and along the edges of the triangulation,
// wrong heights by the trend of the points around (docs/survey-check.md has the thresholds). A
// finding is a reason to look, not a proof.
#pragma once

#include "survey/check/Finding.h"
#include "triangulation/TriangulatePoints.h"
#include "util/StopToken.h"

#include <optional>

namespace terravo {

struct ImportReport;

struct CheckOptions {
    /// Points nearer than this are near repeats, data units. When it is not given: a thousandth of
    /// the usual distance of neighbours, at least one unit of the last decimal of the file, at most
    /// a tenth of that distance.
    std::optional<double> tolerance;
    /// Findings of a kind that stand for themselves; the others are gathered in one more.
    std::size_t mostOfAKind = 500;
};

/// Checks a survey.
/// @param outcome  the triangulation of these points, as Survey::Triangulation makes it.
/// @param report   of the reading; null when there is none.
/// @return the findings, the gravest first, then in the order of the points; empty also when it was
///         stopped.
std::vector<Finding> CheckSurvey(const PointSet& points, const TriangulationOutcome& outcome,
                                 const ImportReport* report, const CheckOptions& options = {},
                                 const StopToken& stop = StopToken());

} // namespace terravo
