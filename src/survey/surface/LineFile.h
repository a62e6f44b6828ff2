// Breaklines and rings out of a file.
//
// Data: text with lines "x y z" or "x y", a blank line or a line with a name between two polylines;
// or a table in which a column names the line that a vertex belongs to. Method: decoded and taken
// apart as point files are. Whatever is wrong is named by file and line; nothing is guessed.
#pragma once

#include "survey/surface/SurfacePlan.h"
#include "util/StopToken.h"

#include <string>
#include <vector>

namespace terravo {

struct LineReading {
    std::vector<SurfaceLine> lines;
    std::vector<std::string> remarks; // full sentences
    std::string failure;              // full sentence; nothing is in `lines` then
    bool isStopped = false;
};

/// How lines are closed.
enum class LineClosing {
    AsTheyAre, // a line whose last vertex repeats the first is closed
    Always     // rings: an open one is closed, with a remark
};

LineReading ReadLineFile(const std::string& path, LineClosing closing,
                         const StopToken& stop = StopToken());

} // namespace terravo
