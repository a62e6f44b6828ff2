// What a plan makes of the head of a file, line by line.
//
// Data: the first bytes of the file as text. Method: the lines are told apart and fitted exactly as
// the reading does it; the first of them are kept with their fields, to be shown, the points of all
// of them, to be drawn.
#pragma once

#include "survey/PointSet.h"
#include "survey/import/ImportPlan.h"
#include "survey/import/RecordFit.h"
#include "util/NumberListReader.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace terravo {

/// The start of a file, decoded.
struct HeadText {
    std::string path;
    std::string text;   // whole lines
    bool isAll = false; // nothing follows in the file
    std::optional<ReadFailure> failure;
};

HeadText ReadHeadText(const std::string& path, TextEncoding encoding);

enum class LineKind : unsigned char { Point, Header, Comment, Blank, NoHeight, Bad };

struct PreviewLine {
    std::int64_t line = 0; // from 1; of a free list the number of the point
    LineKind kind = LineKind::Point;
    std::vector<std::string> fields; // UTF-8, no more than kMostColumns; of a comment the line
    std::size_t fieldCount = 0;
    Misfit misfit = Misfit::None;
    std::size_t misfitField = 0; // from 1; 0 for the number of fields
};

struct ImportPreview {
    static constexpr std::size_t kMostColumns = 64;
    static constexpr std::size_t kMostListed = 100;

    std::vector<PreviewLine> lines; // with the first records
    std::size_t columns = 0;        // that these have
    std::size_t usualFields = 0;    // that most records of the head have
    PointSet points;                // of the whole head
    bool isAll = false;             // that is the whole file

    std::int64_t linesRead = 0;
    std::int64_t records = 0; // lines of data, those left out included
    std::int64_t headerLines = 0;
    std::int64_t commentLines = 0;
    std::int64_t blankLines = 0;
    std::int64_t voidHeights = 0;
    std::int64_t badRecords = 0;
    std::vector<std::int64_t> voidLines; // the first
    std::vector<PreviewLine> bad;        // the first
    std::optional<ReadFailure> failure;  // of a free list, after the points before it
};

/// @param head  in the encoding of the plan; a free list is read from its file instead.
/// @param most  records whose fields are kept.
ImportPreview PreviewOf(const HeadText& head, const ImportPlan& plan, std::size_t most = 200);

} // namespace terravo
