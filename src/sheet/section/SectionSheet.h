// Sections as sheets.
//
// Data: a plan, profiles. Method: head, frame and legend share the paper; the section has what the
// others leave. Many cross-sections stand in a grid on as many sheets as they need, all at the same
// scales.
#pragma once

#include "sheet/section/SectionPlan.h"
#include "sheet/section/SectionScales.h"
#include "sheet/section/SectionView.h"

namespace terravo {

struct SectionSheet {
    SheetScene scene;
    SectionView view; // between stations and heights and the paper
    SectionScales scales;
};

/// A section of its own. One that finds no surface has a frame that says so.
SectionSheet MakeSectionSheet(const SectionPlan& plan, const SectionSource& source,
                              const SheetWords& words);

/// Cross-sections, in rows from the upper left, each with its station above it.
/// @return none without a source.
std::vector<SheetScene> MakeCrossSectionSheets(const SectionPlan& plan,
                                               std::span<const SectionSource> sources,
                                               const SheetWords& words);

} // namespace terravo
