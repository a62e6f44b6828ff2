// The colours and line widths of a section, taken from the theme of a sheet.
//
// Data: plain values. Method: cut and fill have the colours that they have on the sheet of a
// difference; the second survey has dashes as well as a colour, for paper without colours.
#pragma once

#include "sheet/SheetTheme.h"

namespace terravo {

struct SectionStyle {
    SheetTheme theme;
    SheetInk first;
    SheetInk second;
    SheetInk datum;
    SheetInk grid;
    SheetInk bend;
    SheetInk axis;
    SheetInk breakline;
    Colour ground = 0;
    Colour cut = 0;
    Colour fill = 0;
};

/// @param theme  its name; that of the first theme where there is none of that name.
SectionStyle SectionStyleOf(std::string_view theme);

} // namespace terravo
