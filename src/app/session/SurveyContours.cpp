#include "app/session/SurveyContours.h"

#include "plot2d/ColourScale.h"

#include <limits>
#include <utility>

namespace terravo {

bool SurveyContours::Prepare(const LevelRule& rule, const StopToken& stop) {
    if (rule_ == rule && version_ == survey_.Version()) {
        return true;
    }
    rule_.reset();
    regions_.Clear();
    const PointSet& points = survey_.Points();
    const TriangulationOutcome& made = survey_.Triangulation(stop);
    levels_ =
        MakeLevelSet(rule, points.extentZ, ColourScale::MakePalette(ColourScale::kPlanColours), {});
    std::optional<ContourSet> contours = MakeContourSet(points, made.triangles, levels_, stop);
    if (!contours || stop.IsStopRequested()) {
        return false;
    }
    contours_ = std::move(*contours);
    rule_ = rule;
    version_ = survey_.Version();
    return true;
}

// A level below everything comes first: above it is the whole surface.
const Array1<LevelRegion>& SurveyContours::Regions() {
    if (regions_.UpperBound() > 0) {
        return regions_;
    }
    const PointSet& points = survey_.Points();
    const TriangleList& triangles = survey_.Triangulation().triangles;
    ContourSet below(1);
    below[1].value = std::numeric_limits<double>::lowest();
    regions_ = MakeLevelRegions(points, triangles, below);
    for (LevelRegion& region : MakeLevelRegions(points, triangles, contours_)) {
        regions_.Append(std::move(region));
    }
    return regions_;
}

} // namespace terravo
