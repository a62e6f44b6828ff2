// The values of one run that windows, drawing and export share.
//
// One object, owned by main and passed by reference; nothing else in the program is global.
#pragma once

#include "util/Array1.h"
#include "util/TextCatalogue.h"

#include <string>

namespace terravo {

struct RunState {
    /// User-interface texts in the language of the user.
    TextCatalogue texts;
    /// Decimal separator of the user, for numbers on the screen only.
    char decimalSeparator = '.';

    // Folders, each ending in a separator.
    std::string workFolder;            ///< exchange files
    std::string userFolder;            ///< the user's configuration
    std::string supportFolder;         ///< language and colour files, the user's copy
    std::string pointsFolder;          ///< where file dialogs start
    std::string applicationDataFolder; ///< holds userFolder

    /// Path of the QRZ file to write; set by whoever starts an export.
    std::string qrzExportPath;
    /// Path of the QRZ file written last; empty while nothing has been exported.
    std::string lastQrzExportPath;

    /// Text of the last failed contour drawing; empty means success.
    std::string lastDrawError;
    /// Number of levels that the contour routines recorded when they last started.
    Index lastLevelCount = 0;
};

} // namespace terravo
