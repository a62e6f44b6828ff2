#include "app/session/SurveyReview.h"

#include "survey/check/SurfaceFindings.h"
#include "survey/check/SurveyCheck.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace terravo {

void SurveyReview::Begin(ImportReport report) {
    report_ = std::move(report);
    findings_.clear();
    isMade_ = false;
    ++revision_;
}

bool SurveyReview::HasExcluded(const Finding& finding) const {
    return std::any_of(finding.points.begin(), finding.points.end(),
                       [this](Index point) { return survey_.IsExcluded(point); });
}

bool SurveyReview::Check(const StopToken& stop) {
    const TriangulationOutcome& made = survey_.Triangulation(stop);
    std::vector<Finding> found = CheckSurvey(survey_.Points(), made, &report_, {}, stop);
    if (stop.IsStopRequested()) {
        return false;
    }
    if (const ShownSurface shown = survey_.Surface(stop); shown.shaped != nullptr) {
        std::vector<Finding> more = FindingsOf(*shown.shaped, survey_.Plan(), survey_.Points());
        std::move(more.begin(), more.end(), std::back_inserter(found));
    }
    for (Finding& finding : found) {
        for (Index& point : finding.points) {
            point = survey_.NumberAmongAll(point);
        }
    }
    std::copy_if(std::make_move_iterator(findings_.begin()),
                 std::make_move_iterator(findings_.end()), std::back_inserter(found),
                 [this](const Finding& finding) { return HasExcluded(finding); });
    std::stable_sort(found.begin(), found.end(),
                     [](const Finding& a, const Finding& b) { return a.severity < b.severity; });
    findings_ = std::move(found);
    isMade_ = true;
    version_ = survey_.Version();
    ++revision_;
    return true;
}

std::array<std::size_t, 3> SurveyReview::Counts() const {
    std::array<std::size_t, 3> counts{};
    for (const Finding& finding : findings_) {
        ++counts[static_cast<std::size_t>(finding.severity)];
    }
    return counts;
}

std::vector<Index> PointsToExclude(const Finding& finding) {
    const bool isOnePlace = finding.kind == FindingKind::Repeat ||
                            finding.kind == FindingKind::RepeatOtherHeight ||
                            finding.kind == FindingKind::NearRepeat;
    const auto keep = isOnePlace && !finding.points.empty() ? 1 : 0;
    return {finding.points.begin() + keep, finding.points.end()};
}

} // namespace terravo
