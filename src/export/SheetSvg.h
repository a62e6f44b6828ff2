// A sheet as an SVG file.
//
// Data: a finished sheet. Method: one user unit is a millimetre, a group for each layer carries its
// name; a contour is a path in absolute coordinates with its height, a smooth one of cubics, a text
// is a text. Numbers have three decimals: a micrometre.
#pragma once

#include "sheet/SheetScene.h"
#include "sheet/TextMeasure.h"
#include "util/OutputFile.h"

#include <string>

namespace terravo {

/// @param title    of the picture, for whoever lists or reads it.
/// @param measure  tells how wide the texts are to be, whatever font a viewer takes.
/// Throws AppError (kDeviceIo).
void WriteSheetSvg(const OutputTarget& target, const SheetScene& scene, const std::string& title,
                   const TextMeasure& measure);

} // namespace terravo
