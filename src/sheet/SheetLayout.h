// Where on the paper everything stands: the map, its scale, and the boxes around it.
//
// Data: the plan, the extent of the survey. Method: across, a column to the right of the map holds
// north arrow, legend, scale bar and title block; upright, a strip below it. Both are as long as
// the map, so that edges stand in line. Texts beside the map grow slowly with the paper, and
// distances with the texts. What is switched off leaves its room to the map. Where the orientation
// is open, the one that allows the larger scale is taken.
#pragma once

#include "sheet/MapView.h"
#include "sheet/SheetPlan.h"
#include "util/TextCatalogue.h"

#include <vector>

namespace terravo {

struct SheetLayout {
    SheetBox paper;
    SheetBox map; // the inside of its frame; values of the ticks stand below and to the left
    // Of what is switched on, else empty.
    SheetBox titleBlock;
    SheetBox legend;
    SheetBox scaleBar;
    SheetBox northArrow;
    double textHeight = 1.8; // of the texts beside the map, of a capital, millimetres
    double tick = 1.5;       // length of the ticks of the frame
    double valueRoom = 5;    // between the map and the margin, below and to the left
    double scale = 1000;     // N
    MapView view;
    std::vector<Statement> remarks; // what does not fit
};

/// The height that the lines of the title block want, in units of their text height.
double TitleBlockHeight(const SheetPlan& plan);

/// Millimetres that nothing is printed on.
double MarginOf(const PaperSize& paper);
/// The height of texts beside a map.
/// @param usual  of texts on paper as wide as A4.
double TextHeightOn(const PaperSize& paper, double usual);

/// @param points  of the survey, for its extent; heights do not count.
SheetLayout LayOut(const SheetPlan& plan, const PointSet& points);

} // namespace terravo
