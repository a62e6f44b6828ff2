// Breaklines and rings out of files of any kind that holds lines.
#pragma once

#include "survey/surface/LineFile.h"

#include <string>
#include <vector>

namespace terravo {

/// Reads lines; so far of texts alone.
inline LineReading ReadSurfaceLines(const std::string& path, LineClosing closing,
                                    const std::vector<std::string>& /*layers*/ = {},
                                    const StopToken& stop = StopToken()) {
    return ReadLineFile(path, closing, stop);
}

} // namespace terravo
