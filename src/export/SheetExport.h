// A sheet as a file: PDF, SVG or PNG, at true scale.
//
// Data: a finished sheet. Method: a PDF and a PNG are painted by the same code as the window shows;
// the SVG has a writer of its own, for its groups. The same sheet gives the same bytes: a PDF says
// no date of its own.
#pragma once

#include "export/PictureExport.h"
#include "sheet/SheetScene.h"
#include "util/OutputFile.h"
#include "util/StopToken.h"

#include <span>
#include <string>
#include <vector>

namespace terravo {

struct SheetFileWish {
    std::string title;               // of the document
    int dotsPerInch = 300;           // of a PNG
    const StopToken* stop = nullptr; // asked while a PDF or a PNG is painted
};

/// Writes a sheet, whole or not at all. Throws AppError: kDeviceIo where the file cannot be
/// written, kDrawing for a picture of more pixels than memory holds.
/// @return false when it was stopped; there is no file then.
bool WriteSheet(const OutputTarget& target, PictureKind kind, const SheetScene& scene,
                const SheetFileWish& wish);

/// Writes sheets that belong together. A PDF has a page for each. Of the other kinds each sheet is
/// a file of its own; where there are several, their numbers stand before the extension:
/// "name-1.png". All files appear together. Throws as WriteSheet does.
/// @return the paths of the files; none without a sheet and when it was stopped.
std::vector<std::string> WriteSheets(const OutputTarget& target, PictureKind kind,
                                     std::span<const SheetScene> scenes, const SheetFileWish& wish);

} // namespace terravo
