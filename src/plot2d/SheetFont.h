// The fonts of sheets: how wide their texts are, and how a painter in millimetres writes them.
//
// Data: the fonts inside the program. Method: a font of one large size, without hinting, that is
// scaled to the height wanted; so a text is as wide on the screen, in a picture and on paper.
#pragma once

#include "plot2d/SurfaceFont.h"

#include <QFont>
#include <QFontMetricsF>

namespace terravo {

/// Height of a capital letter in parts of the size of the font.
inline constexpr double kCapitalPart = 1409.0 / 2048;
/// The size at which texts are measured and written, in units of the painter.
inline constexpr int kSheetFontSize = 100;

/// That size, upright, antialiased.
QFont SheetFont(bool bold);

/// Width of a text whose capitals have the height 1.
double SheetTextWidth(const QString& text, bool bold);

} // namespace terravo
