#include "survey/check/SurveyCheck.h"

#include "survey/check/ClosePoints.h"
#include "survey/check/HeightOutliers.h"
#include "survey/check/WholeSurvey.h"
#include "survey/import/PointImport.h"

#include <utility>

namespace terravo {

std::vector<Finding> CheckSurvey(const PointSet& points, const TriangulationOutcome& outcome,
                                 const ImportReport* report, const CheckOptions& options,
                                 const StopToken& stop) {
    constexpr const char* kStage = "Check";
    FindingCollector findings(points, options.mostOfAKind);
    if (report != nullptr && report->voidHeights > 0) {
        findings.AddLines(FindingKind::VoidHeight, Severity::Warning, report->voidLines,
                          report->voidHeights,
                          {Text::SaysVoidHeight, {std::to_string(report->voidHeights)}});
    }
    if (points.count == 0 || !stop.GoesOn(kStage, 0)) {
        return stop.IsStopRequested() ? std::vector<Finding>{} : findings.Take();
    }
    CheckColumns(points, findings);
    const Array1<char> isLone = FindLonePoints(points, findings);
    if (!stop.GoesOn(kStage, 0.1)) {
        return {};
    }
    MeshOrder mesh(points, outcome.triangles);
    CheckClosePoints(points, outcome, mesh, options.tolerance, findings);
    if (!stop.GoesOn(kStage, 0.4)) {
        return {};
    }
    FindHeightOutliers(std::move(mesh), isLone, findings);
    return stop.GoesOn(kStage, 1) ? findings.Take() : std::vector<Finding>{};
}

} // namespace terravo
