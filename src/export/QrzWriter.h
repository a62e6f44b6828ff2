// The vector files of the companion CAD program, extension "qrz".
//
// Data: the two exchange files in the work folder, "livelli.txt" and "point_qrw.txt"; the path to
// write in RunState::qrzExportPath. Method: text records, one a line, CR LF. The files are read and
// never the memory, so an export reflects the last drawing and the last triangulation. A file
// appears under its name when it is complete.
//
// After a file has been written its path is the last exported one and is put on the clipboard.
#pragma once

#include "contour/TriangleCut.h"
#include "util/RunState.h"
#include "util/Services.h"

#include <string>

namespace terravo::QrzWriter {

/// Writes the contour segments: a layer for each run of equal level, a LINE entity for each
/// segment. A missing or malformed segment file and a write error end it without a word, with the
/// clipboard and the last exported path as they were. So does a first level of exactly 0, but that
/// leaves a file that holds the header alone.
void WriteQrzLevels(RunState& state, ClipboardService& clipboard, LogService& log);

/// Writes the triangles as closed polylines on one layer. An error is told in one message; the
/// clipboard stays as it was.
void WriteQrzTriangles(RunState& state, ClipboardService& clipboard, MessageService& messages,
                       LogService& log);

/// Appends the 24 lines of a layer.
/// @param number  1-based.
void WriteQrzLayerBlock(std::string& out, Index number, const std::string& name);

/// Appends the lines of one contour segment.
void WriteQrzLineEntity(std::string& out, const std::string& layer, const SpacePoint& start,
                        const SpacePoint& end);

} // namespace terravo::QrzWriter
