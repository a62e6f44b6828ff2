// The exchange file of contour segments, "livelli.txt".
//
// Data: two lines a segment, its two points as x, y and the level value. Method: printed numbers in
// zones, CR LF; an old file goes when a drawing begins, the new one has its name when it ends. The
// export of contours reads this file, not the memory.
#pragma once

#include "util/NumberText.h"
#include "util/OutputFile.h"

#include <cstdint>
#include <string>
#include <utility>

namespace terravo {

/// Name of the file in the work folder.
inline constexpr const char* kSegmentFileName = "livelli.txt";

class SegmentFile {
public:
    /// Replaces an old file. Throws AppError.
    explicit SegmentFile(std::string path) : file_(std::move(path), OutputFile::Mode::Open) {}

    void WriteSegment(double x1, double y1, double x2, double y2, double level) {
        NumberText::AppendPrintedLine(file_.Buffer(), x1, y1, level);
        NumberText::AppendPrintedLine(file_.Buffer(), x2, y2, level);
        file_.FlushWhenFull();
        ++count_;
    }

    /// Writes the rest and closes the file. Throws AppError.
    void Close() { file_.Commit(); }

    [[nodiscard]] std::int64_t Count() const { return count_; }

private:
    OutputFile file_;
    std::int64_t count_ = 0;
};

} // namespace terravo
