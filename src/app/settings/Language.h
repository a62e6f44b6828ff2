// The language file: the texts of the user interface, one a line.
//
// Data: UTF-8 lines ended by LF or CR LF. Method: every line, whole and in file order, is the next
// entry of the text table.
#pragma once

#include "util/TextCatalogue.h"

#include <string>
#include <vector>

namespace terravo {

/// Name of the language file of a prefix; an empty prefix names the file of the first run.
std::string LanguageFileName(const std::string& prefix);

/// The lines of a language file, line ends left out; empty when the file cannot be read.
TextTable LoadTextTable(const std::string& path);

/// The lines of a small text file of the user, without their line ends.
/// @return none for what cannot be such a file: missing, a folder, a pipe, a device, or more than
///         1 MiB.
std::vector<std::string> ReadSmallFile(const std::string& path);

} // namespace terravo
