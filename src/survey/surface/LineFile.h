// Breaklines and rings out of a file.
//
// Data: text with lines "x y z" or "x y", a blank line or a line with a name between two polylines;
// or a table in which a column names the line that a vertex belongs to. Method: decoded and taken
// apart as point files are. Whatever is wrong is named by file and line; nothing is guessed.
#pragma once

#include "survey/surface/LineCollector.h"
#include "util/StopToken.h"

#include <string>

namespace terravo {

/// Reads a text; docs/formats.md says of which form. A line with a vertex that cannot be read is
/// left out with a remark. A file that makes no sense, or in which a line has heights at some
/// vertices only, is a failure.
/// @param stop  stage "read".
LineReading ReadLineFile(const std::string& path, LineClosing closing,
                         const StopToken& stop = StopToken());

} // namespace terravo
