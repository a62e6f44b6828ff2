// What the settings dialog offers and writes: the user's language and colours.
//
// Data: the language files of the support folder; "sxconf.cff" and "color_menu.cff" in the user's
// folder. Method: each file is read, changed where the choice lies, and written whole; a program
// that shares it finds its own lines as they were. The choices count from the next start.
#pragma once

#include "app/settings/ColourScheme.h"

#include <string>
#include <vector>

namespace terravo {

/// A language that can be chosen.
struct LanguageChoice {
    std::string prefix; // of its file
    std::string name;   // in the language itself; the prefix where it is not known
};

/// The languages whose files lie in a folder, by prefix. The file without a prefix is English; it
/// is offered where "en_p.trl" is missing.
/// @param supportFolder  with a separator at its end; one that cannot be read offers nothing.
std::vector<LanguageChoice> LanguageChoices(const std::string& supportFolder);

/// Prefix of the language that "sxconf.cff" asks for; empty when it asks for none.
/// @param userFolder  RunState::userFolder; an empty one asks for none.
std::string LanguageAtNextStart(const std::string& userFolder);

/// The colours for a bright room; a default ColourScheme is the dark one.
ColourScheme LightScheme();

/// Makes a prefix the language of the next start: the sixth line of "sxconf.cff". All other lines
/// stay as they are; a new file has five empty ones and the number 0. Throws AppError when the file
/// cannot be read or written; it is then as it was.
/// @param userFolder  RunState::userFolder, filled.
void WriteLanguage(const std::string& userFolder, const std::string& prefix);

/// Writes "color_menu.cff" for the next start. Throws AppError.
/// @param userFolder  RunState::userFolder, filled.
void WriteColourScheme(const std::string& userFolder, const ColourScheme& scheme);

} // namespace terravo
