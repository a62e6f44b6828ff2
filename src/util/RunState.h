// The values of one run that windows, drawing and export share.
//
// One object, owned by main and passed by reference; nothing else in the program is global.
#pragma once

#include "util/Array1.h"

#include <string>
#include <vector>

namespace terravo {

struct RunState {
    /// User-interface texts, one a line of the language file, counted from 0.
    std::vector<std::string> textTable;
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

    /// Text `index` of the table, empty when the language file has no such line.
    [[nodiscard]] std::string Text(std::size_t index) const {
        return index < textTable.size() ? textTable[index] : std::string();
    }

    /// The same, or the English text where the user's language file is older than the program.
    [[nodiscard]] std::string TextOr(std::size_t index, const char* english) const {
        return index < textTable.size() ? textTable[index] : english;
    }
};

/// Places in RunState::textTable that the program itself reads.
namespace TextIndex {
inline constexpr std::size_t kPointsWord = 7;
inline constexpr std::size_t kPlotTitle = 23;
inline constexpr std::size_t kTooFewLevels = 24;
inline constexpr std::size_t kNoTriangulation = 25;
inline constexpr std::size_t kNoTriangulationAdvice = 26;
inline constexpr std::size_t kUnusedPoints = 27;
inline constexpr std::size_t kFirstPointsNotDistinct = 28;
inline constexpr std::size_t kTrianglesWord = 29;
inline constexpr std::size_t kScaleErrorSource = 30;
inline constexpr std::size_t kBadPointFile = 31;
inline constexpr std::size_t kDrawingStopped = 32;
inline constexpr std::size_t kErrorTitle = 33;
inline constexpr std::size_t kViewErrorTitle = 34;
inline constexpr std::size_t kChooseFile = 36;
inline constexpr std::size_t kWorking = 37;
inline constexpr std::size_t kReadingStopped = 38;
inline constexpr std::size_t kSaveRefused = 39;
inline constexpr std::size_t kStop = 40;
inline constexpr std::size_t kExportMap = 41;
inline constexpr std::size_t kPrint = 42;
inline constexpr std::size_t kExportPicture = 43;
inline constexpr std::size_t kPictureNotWritten = 44;
inline constexpr std::size_t kWhitePaper = 45;
inline constexpr std::size_t kPaperSize = 46;
} // namespace TextIndex

} // namespace terravo
