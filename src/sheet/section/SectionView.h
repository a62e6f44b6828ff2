// Where stations and heights of a section are on the paper.
//
// Data: the frame of the section, a scale for lengths and one for heights. Method: distances from
// the left and the bottom of the frame are formed first, so that great heights lose nothing.
#pragma once

#include "sheet/SheetScene.h"

namespace terravo {

struct SectionView {
    SheetBox box;          // the inside of the frame
    double station = 0;    // at its left side, data units
    double height = 0;     // at its bottom
    double perStation = 1; // millimetres a data unit
    double perHeight = 1;  // likewise
    double zero = 0;       // the station that is written as 0

    [[nodiscard]] SheetPoint ToPaper(double atStation, double z) const {
        return {box.left + (atStation - station) * perStation,
                box.bottom - (z - height) * perHeight};
    }
    [[nodiscard]] double StationAt(double x) const { return station + (x - box.left) / perStation; }
    [[nodiscard]] double HeightAt(double y) const { return height + (box.bottom - y) / perHeight; }
};

} // namespace terravo
