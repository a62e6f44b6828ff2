// The scales of a section.
//
// Data: how long and how high it is, the room on the paper. Method: lengths get the largest usual
// scale at which they fit, heights the largest usual multiple of it that has room and does not make
// the profile steeper than a page wants it.
#pragma once

#include "sheet/section/SectionPlan.h"

namespace terravo {

struct SectionScales {
    double scale = 1000;     // the N of 1:N of lengths
    double exaggeration = 1; // of heights

    [[nodiscard]] double PerStation() const { return 1000 / scale; } // millimetres a data unit
    [[nodiscard]] double PerHeight() const { return exaggeration * PerStation(); }
};

/// The largest factor that is taken by itself.
inline constexpr double kMostExaggeration = 100;

/// @param length, range    data units; neither need be above 0.
/// @param width, height    the room, millimetres.
SectionScales ChooseScales(const SectionPlan& plan, double length, double range, double width,
                           double height);

} // namespace terravo
