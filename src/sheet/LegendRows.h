// What the legend of a sheet has a row for.
//
// Data: the plan, the levels, the theme. Method: only what the sheet shows gets a row; heights get
// theirs where colours tell them.
#pragma once

#include "sheet/MakeSheet.h"

#include <string>
#include <vector>

namespace terravo {

/// None: a heading. Remark: on what stands above it.
enum class LegendSample : unsigned char { None, Remark, Line, Band, Triangles, Dot, Cross, Scale };

struct LegendRow {
    LegendSample sample = LegendSample::None;
    std::string text;
    SheetInk ink{};       // of a band: of the contour at its lower edge, width 0 for none
    Colour fill = 0;      // of a band
    std::string beside{}; // what is written beside a dot
    double rows = 1;      // that it takes
};

/// Contours, how near to the surface smooth ones are, edge, triangles, points, grid.
std::vector<LegendRow> SymbolRows(const SheetContext& context);

/// A heading, then bands or coloured lines, the highest first; none where colours tell no heights.
std::vector<LegendRow> HeightRows(const SheetContext& context);

/// The volumes of a difference, below the heights.
std::vector<LegendRow> FigureRows(const SheetContext& context);

/// Whether the sheet shows bands.
bool HasBands(const SheetContext& context);
/// Number of the first and of the last band that has an extent, as in SheetContext::BandColour().
Index FirstBand(const SheetContext& context);
Index LastBand(const SheetContext& context);

/// What the contour of a level is drawn with.
SheetInk ContourInkOf(const SheetContext& context, Index level);

} // namespace terravo
