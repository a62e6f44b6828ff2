// The fonts of drawing surfaces, as Qt knows them.
//
// Data: the font of a surface; font files inside the program. Method: texts come from these files
// whatever is installed, and pixel size, hinting and spacing are all chosen here, so that a text is
// as wide on every surface, in every picture file, on every machine and under every platform
// plugin.
#pragma once

#include "plot2d/DrawSurface.h"

#include <QFont>
#include <QString>

#include <string_view>

namespace terravo {

/// Loads the program's fonts, once; the first MakeSurfaceFont does it too. Windows that are made
/// later have letters even where no font is installed.
void LoadSurfaceFonts();

/// The font that a picture of pixels is drawn and every text is measured with: "MS Sans Serif" and
/// "Courier New" are the program's own Liberation Sans and Liberation Mono, any other name is
/// looked for among the installed fonts. Letters that the font lacks come from those, too.
QFont MakeSurfaceFont(const Font& font);

/// The family that a file names which does not carry its fonts along.
QString PublicFamily(const Font& font);

/// UTF-8 as Qt's text.
QString SurfaceText(std::string_view utf8);

/// The same with blanks for control characters, which a file may have in its name and no XML text
/// may hold.
QString PrintableText(std::string_view utf8);

} // namespace terravo
