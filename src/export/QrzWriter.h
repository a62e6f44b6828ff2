// The vector files of the companion CAD program, extension "qrz".
//
// Data: the two exchange files, "livelli.txt" and "point_qrw.txt". Method: text records, one a
// line, CR LF. The files are read and never the memory, so an export reflects the last drawing and
// the last triangulation. A file appears under its name when it is complete.
#pragma once

#include "contour/LevelRule.h"
#include "contour/TriangleCut.h"
#include "util/Array1.h"
#include "util/OutputFile.h"

#include <string>

namespace terravo::QrzWriter {

/// What a file of contours came to hold.
enum class Content {
    Whole,
    HeaderOnly // the first level is exactly 0
};

/// What a first level of exactly 0 does. The companion program has always had the header alone; the
/// round levels of a survey at the sea begin at 0 as often as not, and have their layer.
enum class ZeroLevel { LeavesHeaderAlone, HasLayer };

/// What goes with the rule of the levels that were drawn.
inline ZeroLevel ZeroLevelFor(const LevelRule& rule) {
    return rule.kind == LevelRuleKind::ByCount ? ZeroLevel::LeavesHeaderAlone : ZeroLevel::HasLayer;
}

/// Writes the contour segments of a segment file: a layer for each run of equal level, a LINE
/// entity for each segment.
/// @param levelCount  of the drawing that wrote the segments; stands in the header.
/// @param zero        of the first level alone; another one of exactly 0 always has its layer.
/// Throws AppError for a missing or malformed segment file and for a write error; an old file then
/// stays as it was.
Content WriteQrzLevels(const std::string& segmentFile, Index levelCount, const OutputTarget& target,
                       ZeroLevel zero = ZeroLevel::LeavesHeaderAlone);

/// Writes the triangles of a mesh file as closed polylines on one layer. Throws AppError likewise.
void WriteQrzTriangles(const std::string& meshFile, const OutputTarget& target);

/// Appends the 24 lines of a layer.
/// @param number  1-based.
void WriteQrzLayerBlock(std::string& out, Index number, const std::string& name);

/// Appends the lines of one contour segment.
void WriteQrzLineEntity(std::string& out, const std::string& layer, const SpacePoint& start,
                        const SpacePoint& end);

} // namespace terravo::QrzWriter
