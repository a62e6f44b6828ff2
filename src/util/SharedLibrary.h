// Libraries that are loaded while the program runs.
//
// Data: files of machine code. Method: the system's loader; what is loaded stays until the program
// ends.
#pragma once

#include <string>

namespace terravo::SharedLibrary {

/// The folder of the running program, without a separator at its end; empty when it cannot be told.
std::string ProgramFolder();

/// The address of a symbol of a library.
/// @param[out] reason  the loader's own words when there is none.
/// @return null when the library or the symbol cannot be had.
void* SymbolOf(const std::string& file, const char* symbol, std::string& reason);

} // namespace terravo::SharedLibrary
