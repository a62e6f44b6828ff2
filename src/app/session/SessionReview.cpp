// The session's commands that check the points and exclude some of them.
#include "app/session/Session.h"
#include "app/session/WorkGuard.h"
#include "survey/PointSubset.h"

#include <algorithm>

namespace terravo {
namespace {

constexpr Index kFewestInUse = 3;

} // namespace

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
    if (excluded) {
        std::vector<Index> wanted = survey_.ExcludedPoints();
        wanted.insert(wanted.end(), points.begin(), points.end());
        std::sort(wanted.begin(), wanted.end());
        wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
        if (static_cast<Index>(wanted.size()) > survey_.AllPoints().count - kFewestInUse) {
            services_.messages.ShowCritical(state_.texts[Text::ThreeMustRemain], "");
            return false;
        }
    }
    if (!survey_.SetExcluded(points, excluded)) {
        return false;
    }
    view_->ShowPointCount(survey_.Points().count);
    RunPipeline();
    ShowResultViews(drawn_);
    view_->ShowFindings();
    return true;
}

void Session::MarkPoint(std::optional<Index> point) {
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
