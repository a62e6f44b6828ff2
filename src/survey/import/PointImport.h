// Points out of a file, read as an import plan says.
//
// Data: the text of the file; the points, with names, codes and lines where the file has them.
// Method: each line is a record. Lines of three plain numbers, which most files have, are read
// straight from the window; every other line is taken apart into fields. Grids are read as the
// points of their nodes. What is left out and what does not fit is counted with its lines.
#pragma once

#include "survey/PointSet.h"
#include "survey/import/Inspection.h"
#include "util/StopToken.h"

#include <optional>
#include <string>
#include <vector>

namespace terravo {

/// A record that does not fit the plan.
struct BadRecord {
    std::int64_t line = 0;
    std::int64_t field = 0; // from 1; 0 when the number of fields is wrong
    std::string content;    // of the field, quoted; empty when the number of fields is wrong
    std::string cause;      // without a full stop
};

/// What was found in a file.
struct ImportReport {
    std::int64_t records = 0; // lines of data, those left out included
    std::int64_t headerLines = 0;
    std::int64_t commentLines = 0;
    std::int64_t blankLines = 0;
    std::int64_t voidHeights = 0;
    std::int64_t badRecords = 0;
    std::vector<std::int64_t> voidLines; // the first kMostListed
    std::vector<BadRecord> bad;          // likewise

    static constexpr std::size_t kMostListed = 1000;
};

enum class BadRecords { Refuse, Skip };

/// What came of reading a file.
struct ImportOutcome {
    /// Why there are no points; they are then left as they were.
    std::optional<ReadFailure> failure;
    /// The file is not certain, or a record did not fit: somebody has to choose.
    bool needsChoice = false;
    Inspection inspection;
    ImportReport report;
};

/// Reads a file if its reading is certain, or as somebody has said.
/// @param[out] points  all that was read, with the name of the file; the folder stays.
ImportOutcome ImportPoints(const std::string& path, const ImportWish& wish, BadRecords bad,
                           PointSet& points, const StopToken& stop = StopToken());

/// Reads a file by a plan, whatever an inspection would say.
ImportOutcome ImportByPlan(const std::string& path, const ImportPlan& plan, BadRecords bad,
                           PointSet& points, const StopToken& stop = StopToken());

/// What the columns were read as, or which grid it was: "xyz".
std::string NameOfReading(const Inspection& inspection);

/// The first sentence of the summary of a reading: "x, y, z; 396 points; 10 without height".
std::string DescribeImport(const ImportOutcome& outcome, Index points);

} // namespace terravo
