// Where the shipped language and colour files are.
#pragma once

#include <string>

namespace terravo {

/// Folder of the shipped files: "supporto" beside the program, else installed beside it, else that
/// of the source tree in a build that was not installed.
/// @param programFolder  folder of the running program, without a separator at its end.
/// @return the folder with a separator at its end; empty when there is none.
std::string FindSupportFolder(const std::string& programFolder);

} // namespace terravo
