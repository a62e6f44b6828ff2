// One section inside its frame: areas, grid, profiles, ticks and their values.
//
// Data: the section, its view on the paper. Method: everything is cut off at the frame. Round
// values stand along the axes at such distances that none touches another.
#pragma once

#include "sheet/section/SectionPlan.h"
#include "sheet/section/SectionStyle.h"
#include "sheet/section/SectionView.h"

namespace terravo {

/// What the parts of a sheet of sections are made with.
struct SectionContext {
    const SectionPlan& plan;
    const SheetWords& words;
    const SectionStyle& style;
    double textHeight; // of a capital, millimetres
    double tick;       // length of a tick, millimetres

    /// A line of text as wide as it comes.
    [[nodiscard]] double Width(const std::string& text) const {
        return words.measure.Width(text, textHeight, false);
    }
};

/// The lowest and the highest place of what is drawn; the reverse where nothing is.
Extent HeightsOf(const SectionSource& source);

/// The room that the values of heights take to the left of a frame.
double HeightValueRoom(const SectionContext& context, const SectionView& view);

void AddSectionPlot(const SectionContext& context, const SectionSource& source,
                    const SectionView& view, SheetScene& scene);

} // namespace terravo
