// Texts that keep within the room they have on a sheet.
//
// Data: a text, its height and a width. Method: a text that is too wide becomes a little smaller,
// and where that is not enough it loses its end, which an ellipsis stands for.
#pragma once

#include "sheet/SheetScene.h"
#include "sheet/TextMeasure.h"

#include <string>
#include <string_view>

namespace terravo {

/// One line as it will be written.
struct FittedText {
    std::string text;
    double height = 0; // of a capital letter, millimetres
    bool bold = false;
    double width = 0; // millimetres
};

/// What of a line fits.
/// @param text   UTF-8; breaks and tabs count as blanks.
/// @param room   millimetres.
/// @param least  part of the height down to which it may shrink.
/// @return an empty text where not even an ellipsis has room.
FittedText FitText(const TextMeasure& measure, std::string_view text, double height, bool bold,
                   double room, double least = 0.75);

/// Writes it.
/// @param place, anchor, angle  as in SheetText.
void AddText(SheetScene& scene, SheetLayer layer, const FittedText& fitted, SheetPoint place,
             TextAnchor anchor, Colour colour, double angle = 0);

} // namespace terravo
