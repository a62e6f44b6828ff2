// The contours of a survey, kept while neither the points nor the levels change.
//
// Data: the survey; levels, contours and regions of the last rule, and smooth lines of the same.
// Method: the sheet and the vector files ask for the same lines, which are made anew when the
// survey or the rule has changed; smooth ones when they are wanted otherwise, too.
#pragma once

#include "contour/ContourSet.h"
#include "contour/LevelRegions.h"
#include "contour/LevelRule.h"
#include "contour/smoothing/FlattenContours.h"
#include "survey/Survey.h"

#include <cstdint>
#include <optional>

namespace terravo {

/// The whole surface, then the ground at or above each level.
Array1<LevelRegion> MakeSurfaceRegions(const PointSet& points, const TriangleList& triangles,
                                       const ContourSet& contours);

class SurveyContours {
public:
    /// @param survey  looked at in each call; outlives this.
    explicit SurveyContours(const Survey& survey) : survey_(survey) {}

    /// Makes the contours of a rule where they are not those that are kept.
    /// @return false when it was stopped; nothing is kept then.
    /// Throws AppError for a rule without levels.
    [[nodiscard]] bool Prepare(const LevelRule& rule, const StopToken& stop = StopToken());

    [[nodiscard]] const Survey& TheSurvey() const { return survey_; }
    /// Of the rule that was prepared last.
    [[nodiscard]] const LevelSet& Levels() const { return levels_; }
    [[nodiscard]] const ContourSet& Contours() const { return contours_; }
    /// The whole surface, then the ground at or above each level; made when it is first asked for.
    const Array1<LevelRegion>& Regions();

    /// Makes smooth lines of the rule that was prepared last, where they are not those that are
    /// kept.
    /// @return false when it was stopped; no smooth lines are kept then.
    [[nodiscard]] bool PrepareSmooth(const SmoothingOptions& options,
                                     const StopToken& stop = StopToken());
    /// What they are made of.
    [[nodiscard]] SmoothingSource SourceOfSmooth() const;
    /// Those that were prepared last.
    [[nodiscard]] const SmoothSet& Smooth() const { return smooth_; }
    /// The same as Regions of the smooth lines made straight.
    /// @param tolerance  of that, data units.
    const Array1<LevelRegion>& SmoothRegions(double tolerance);

private:
    const Survey& survey_;
    std::optional<LevelRule> rule_; // of the contours; none: there are none
    std::uint64_t version_ = 0;     // of their survey
    LevelSet levels_;
    ContourSet contours_;
    Array1<LevelRegion> regions_;               // empty until they are needed
    std::optional<SmoothingOptions> smoothing_; // of the smooth lines; none: there are none
    SmoothSet smooth_;
    double tolerance_ = 0; // of the regions
    Array1<LevelRegion> smoothRegions_;
};

} // namespace terravo
