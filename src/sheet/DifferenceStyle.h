// How the sheet of a difference is coloured: ground that was raised, ground that was lowered.
//
// Data: the levels of the sheet and the lowest and highest height. Method: bands are counted from
// zero on either side; the side with more of them reaches the strongest colour, so that the same
// change has the same strength on both.
#pragma once

#include "sheet/MakeSheet.h"

namespace terravo {

/// Lines in the colour of texts, that of no change the heaviest.
SheetTheme DifferenceTheme(SheetTheme theme);

/// 1 where a band lies at or above zero, -1 where it lies at or below, 0 where zero is within it or
/// is all there is.
/// @param band  as in SheetContext::BandColour().
int ChangeOf(const SheetContext& context, Index band);

Colour ChangeBandColour(const SheetContext& context, Index band);

/// The fill of the ground between two heights that need not be levels.
Colour ChangeColourBetween(const SheetContext& context, double low, double high);

} // namespace terravo
