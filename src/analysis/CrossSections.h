// Parallel sections across an axis, and the volume by their end areas.
//
// Data: an axis in plan, a spacing and a width. Method: at each multiple of the spacing, and at the
// end of the axis, a line across it. The volume between neighbours is the mean of their areas times
// their distance along the axis; the exact one is taken over the corridor of the same width.
#pragma once

#include "analysis/MeasuredPolygon.h"
#include "analysis/Profile.h"
#include "analysis/Volumes.h"

#include <optional>
#include <vector>

namespace terravo {

struct CrossSectionPlan {
    std::vector<PlanPoint> axis; // data units
    double spacing = 0;          // data units, above 0
    double width = 0;            // of each section, half of it on either side, above 0
};

struct CrossSection {
    double station = 0;          // of the axis
    std::vector<PlanPoint> line; // two places: from the left of the axis to its right
};

inline constexpr std::size_t kMostCrossSections = 10000;

/// Whether sections at a spacing along an axis would be more than that.
bool AreTooMany(const CrossSectionPlan& plan);

/// @return none where the axis has no length or there would be too many.
std::vector<CrossSection> LayCrossSections(const CrossSectionPlan& plan);

/// The strip of the plan's width along the axis, with mitred bends.
PlanRing CorridorOf(const CrossSectionPlan& plan);

/// The sum over neighbouring sections; how much of the plan is cut and how much is filled it does
/// not know: these areas are 0.
/// @param areas  one a section.
VolumeFigures EndAreaVolume(const std::vector<CrossSection>& sections,
                            const std::vector<SectionAreas>& areas);

} // namespace terravo
