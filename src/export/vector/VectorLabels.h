// Where the values along the contours of a drawing stand.
//
// Data: contours in data units, the height of a capital letter in the same. Method: the lines are
// laid on a paper on which a capital letter is two millimetres high, and labelled as on a sheet.
#pragma once

#include "export/vector/VectorContent.h"

namespace terravo {

/// Fills the labels of content that has its contours and its text height: along index contours, or
/// along all where none of those that are shown is one. The text is taken to be as wide as in the
/// usual font of drawings, 0.9 of its height a character.
/// @param extentX, extentY  of the points.
void PlaceVectorLabels(VectorContent& content, const Extent& extentX, const Extent& extentY);

} // namespace terravo
