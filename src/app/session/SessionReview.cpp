// The session's commands that check the points and exclude some of them.
#include "app/project/ProjectSources.h"
#include "app/session/Session.h"
#include "app/session/WorkGuard.h"
#include "survey/PointSubset.h"

namespace terravo {

void Session::CheckSurvey() {
    if (depth_ > 0 || survey_.AllPoints().count == 0) {
        return;
    }
    {
        const WorkGuard work(*this);
        review_.Check(stop_);
    }
    view_->ShowFindings();
    if (redrawWanted_) {
        DrawContourMap();
    }
}

bool Session::SetExcluded(const std::vector<Index>& points, bool excluded) {
    if (depth_ > 0) {
        return false;
    }
    return ApplyPlan(WithExcluded(survey_.Plan(), points, excluded),
                     excluded ? Text::StepExclude : Text::StepRestore);
}

void Session::MarkPoint(std::optional<Index> point) {
    marked_ = point;
    if (!point) {
        view_->ShowMark(std::nullopt);
        return;
    }
    const PointSet& points = survey_.AllPoints();
    view_->ShowMark(PlanPoint{points.x[*point], points.y[*point]});
}

void Session::SaveExcludedPoints() {
    SavePointSet(PointsAt(survey_.AllPoints(), survey_.ExcludedPoints()), "excluded.txt");
}

} // namespace terravo
