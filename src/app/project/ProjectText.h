// Projects as text, and back.
//
// Data: JSON with a version, readable by a person; docs/formats.md shows it. Method: a writer of
// our own keeps the order of the members and lets every double come back bit for bit; the reader
// asks for each member by name, says where something cannot be, and remarks on what it does not
// know.
#pragma once

#include "app/project/ProjectServices.h"

#include <string>

namespace terravo {

std::string TextOfProject(const Project& project);

/// @param bytes  of the file.
/// @param path   for the sentences.
ProjectReading ProjectFromText(const std::string& bytes, const std::string& path);

} // namespace terravo
