// The colours of windows and controls.
//
// Data: "color_menu.cff", numbers in the list form of point files: red, green and blue of a colour
// that nothing uses; background and text colour; accent colour; grey level. Method: the user's file
// is read in preference to the shipped one; a number that is missing or makes no sense leaves the
// default.
#pragma once

#include "plot2d/Colour.h"

#include <string>

namespace terravo {

struct ColourScheme {
    Colour backColour = RGB(33, 33, 33);      // windows, most controls, end of button gradients
    Colour foreColour = RGB(188, 255, 255);   // text of controls and buttons
    Colour accentColour = RGB(188, 255, 255); // for the other windows
    int greyLevel = 200;                      // 0..255
    Colour greyColour = RGB(200, 200, 200);   // the grey of that level

    bool operator==(const ColourScheme&) const = default;
};

/// Reads the colours. Where the user has no file of his own, he gets a copy of the one in his
/// support folder, to edit. Throws nothing.
/// @param userFolder  RunState::userFolder, filled; an empty one gives the defaults.
ColourScheme ReadColourScheme(const std::string& userFolder);

} // namespace terravo
