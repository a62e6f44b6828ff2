// What the lines and colours of sections mean, in rows below them.
//
// Data: which of them the sections show. Method: items stand beside each other as long as there is
// room, then in the next row.
#pragma once

#include "sheet/section/SectionPlot.h"

#include <span>

namespace terravo {

struct SectionLegendItem {
    std::string text;
    SheetInk ink{};  // of a line
    Colour fill = 0; // of an area
    bool isArea = false;
};

/// @param sources  at least one; areas are told of a single one.
std::vector<SectionLegendItem> SectionLegendItems(const SectionContext& context,
                                                  std::span<const SectionSource> sources);

/// The height that the items take in a width, millimetres.
double SectionLegendHeight(const SectionContext& context,
                           const std::vector<SectionLegendItem>& items, double width);

/// @param box  as wide as the height was asked for.
void AddSectionLegend(const SectionContext& context, const std::vector<SectionLegendItem>& items,
                      const SheetBox& box, SheetScene& scene);

/// An area with its unit, two decimals or more.
std::string AreaText(double area, char decimalSeparator);

} // namespace terravo
