#include "export/SegmentFile.h"

#include "util/AppError.h"
#include "util/NumberText.h"

namespace terravo {

void SegmentFile::Write(double level, const std::vector<LevelPiece>& pieces) {
    for (const LevelPiece& piece : pieces) {
        if (piece.isSegment) {
            NumberText::AppendPrintedLine(file_.Buffer(), piece.x1, piece.y1, level);
            NumberText::AppendPrintedLine(file_.Buffer(), piece.x2, piece.y2, level);
            file_.FlushWhenFull();
        }
    }
}

SegmentReader::SegmentReader(const std::string& path) : reader_(path) {
    if (reader_.HasFailed()) {
        Throw();
    }
}

void SegmentReader::Throw() const {
    throw AppError(ErrorNumber::kDeviceIo, "SegmentReader", reader_.Failure().Sentence());
}

SpacePoint SegmentReader::ReadPoint() {
    SpacePoint point;
    if (!reader_.Read(point.x) || !reader_.Read(point.y) || !reader_.Read(point.z)) {
        Throw();
    }
    return point;
}

bool SegmentReader::Next(LevelSegment& segment) {
    if (reader_.AtEnd()) {
        if (reader_.HasFailed()) {
            Throw();
        }
        return false;
    }
    segment.start = ReadPoint();
    segment.end = ReadPoint();
    return true;
}

} // namespace terravo
