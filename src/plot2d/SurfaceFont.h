// The fonts of drawing surfaces, as Qt knows them.
//
// Data: the font of a surface. Method: family, pixel size, hinting and spacing are all chosen here,
// so that a text is as wide on every surface, in every picture file and under every platform
// plugin.
#pragma once

#include "plot2d/DrawSurface.h"

#include <QFont>
#include <QString>

#include <string_view>

namespace terravo {

/// The font that a picture of pixels is drawn and every text is measured with. Where the named
/// family is not installed, Liberation Sans and Liberation Mono stand in.
QFont MakeSurfaceFont(const Font& font);

/// UTF-8 as Qt's text.
QString SurfaceText(std::string_view utf8);

/// The same with blanks for control characters, which a file may have in its name and no XML text
/// may hold.
QString PrintableText(std::string_view utf8);

} // namespace terravo
