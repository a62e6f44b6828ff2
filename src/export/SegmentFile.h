// The exchange file of contour segments, "livelli.txt": written while a map is drawn, read by the
// export of contours.
//
// Data: two lines a segment, its two points as x, y and the level value. Method: printed numbers in
// zones, CR LF; an old file goes when a drawing begins, the new one has its name when it ends. An
// export reads this file, not the memory, so it always reflects the last drawing.
#pragma once

#include "contour/LevelCut.h"
#include "contour/TriangleCut.h"
#include "util/NumberListReader.h"
#include "util/OutputFile.h"

#include <string>
#include <utility>
#include <vector>

namespace terravo {

/// Name of the file in the work folder.
inline constexpr const char* kSegmentFileName = "livelli.txt";

class SegmentFile {
public:
    /// Replaces an old file. Throws AppError.
    explicit SegmentFile(std::string path) : file_(std::move(path), OutputFile::Mode::Open) {}

    /// Writes the segments of a level; single points are left out. Throws AppError.
    void Write(double level, const std::vector<LevelPiece>& pieces);

    /// Writes the rest and closes the file. Throws AppError.
    void Close() { file_.Commit(); }

private:
    OutputFile file_;
};

/// A segment as the file has it. The level is the z of its start.
struct LevelSegment {
    SpacePoint start;
    SpacePoint end;
};

class SegmentReader {
public:
    /// Throws AppError when the file cannot be read.
    explicit SegmentReader(const std::string& path);

    /// Reads the next segment; false behind the last one. Throws AppError for a line that is no
    /// point and for a segment without its second point.
    bool Next(LevelSegment& segment);

    /// Goes back to the first segment, of the same file even when another one has taken its name.
    void Rewind() { reader_.Rewind(); }

private:
    [[noreturn]] void Throw() const;
    SpacePoint ReadPoint();

    NumberListReader reader_;
};

} // namespace terravo
