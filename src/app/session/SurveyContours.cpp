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
    smoothing_.reset();
    regions_.Clear();
    const ShownSurface made = survey_.Surface(stop);
    levels_ = MakeLevelSet(rule, made.points.extentZ,
                           ColourScale::MakePalette(ColourScale::kPlanColours), {});
    std::optional<ContourSet> contours = MakeContourSet(made.points, made.triangles, levels_, stop);
    if (!contours || stop.IsStopRequested()) {
        return false;
    }
    contours_ = std::move(*contours);
    rule_ = rule;
    version_ = survey_.Version();
    return true;
}

// A level below everything comes first: above it is the whole surface.
Array1<LevelRegion> MakeSurfaceRegions(const PointSet& points, const TriangleList& triangles,
                                       const ContourSet& contours) {
    ContourSet below(1);
    below[1].value = std::numeric_limits<double>::lowest();
    Array1<LevelRegion> regions = MakeLevelRegions(points, triangles, below);
    for (LevelRegion& region : MakeLevelRegions(points, triangles, contours)) {
        regions.Append(std::move(region));
    }
    return regions;
}

const Array1<LevelRegion>& SurveyContours::Regions() {
    if (regions_.UpperBound() > 0) {
        return regions_;
    }
    const ShownSurface made = survey_.Surface();
    regions_ = MakeSurfaceRegions(made.points, made.triangles, contours_);
    return regions_;
}

SmoothingSource SurveyContours::SourceOfSmooth() const {
    const ShownSurface made = survey_.Surface();
    return {made.points, made.triangles,
            made.shaped == nullptr ? nullptr : &made.shaped->visibleMarks, levels_};
}

bool SurveyContours::PrepareSmooth(const SmoothingOptions& options, const StopToken& stop) {
    if (smoothing_ == options) {
        return true;
    }
    smoothing_.reset();
    smoothRegions_.Clear();
    std::optional<SmoothSet> smooth = MakeSmoothContours(SourceOfSmooth(), options, stop);
    if (!smooth || stop.IsStopRequested()) {
        return false;
    }
    smooth_ = std::move(*smooth);
    smoothing_ = options;
    return true;
}

const Array1<LevelRegion>& SurveyContours::SmoothRegions(double tolerance) {
    const bool isKept =
        smoothRegions_.UpperBound() > 0 && tolerance_ <= tolerance && tolerance_ >= tolerance;
    if (!isKept) {
        const ShownSurface made = survey_.Surface();
        smoothRegions_ =
            MakeSurfaceRegions(made.points, made.triangles, FlattenContours(smooth_, tolerance));
        tolerance_ = tolerance;
    }
    return smoothRegions_;
}

} // namespace terravo
