// A look at a file before it is read as points.
//
// Data: the first bytes of the file. Method: the format is told by its marks; a text is taken apart
// with every separator and decimal sign, and the way counts that gives the most lines the same
// columns of numbers. What the columns mean is certain only where a header names them or where
// exactly three of them are numbers; everything else is a list of possibilities for somebody to
// choose from.
#pragma once

#include "survey/import/ImportPlan.h"
#include "survey/import/TextSource.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace terravo {

/// What somebody has said about a file; what is not said is found out.
struct ImportWish {
    std::optional<std::vector<ColumnRole>> columns;
    bool freeList = false;
    std::optional<FieldSeparator> separator;
    std::optional<char> decimal;
    std::optional<Index> skip; // lines at the top
    std::optional<TextEncoding> encoding;
    std::vector<std::string> voids; // see ImportPlan
};

enum class GridFormat { None, Esri, Surfer };

/// Why a file is not certain, for whoever says it in another language.
enum class DoubtKind : unsigned char {
    None,
    NoRecord,
    NoNumbers,
    NamedText,      // a column is named as a coordinate and holds other things
    HeaderCount,    // names and fields of a record: two counts
    Names,          // that do not tell the coordinates apart
    TooFewNumbers,  // columns of them: one count
    ManyNumbers,    // likewise
    CommaOfNumbers, // decimal sign or thousands
};

struct Inspection {
    std::optional<ReadFailure> failure; // it cannot be read, or is a file of another kind
    std::string readAs; // by another reader than that of texts: "GeoPackage: points"
    GridFormat grid = GridFormat::None; // whatever was wished; of the plan then only encoding,
                                        // decimal and voids mean something
    ImportPlan plan;                    // the likeliest
    bool certain = false;
    std::string doubt; // why it is not certain, a sentence without a full stop
    DoubtKind doubtKind = DoubtKind::None;
    std::array<std::size_t, 2> doubtCounts{};
    /// Of NamedText and TooFewNumbers: a text among numbers that may stand for a missing height.
    std::string heightText;
    /// What the columns may be, the likeliest first; empty where no reading gives points.
    std::vector<std::vector<ColumnRole>> candidates;
    bool mayBeFreeList = false;
    bool isEmpty = false;    // a text without a record
    bool hasNumbers = false; // there is something to choose
};

/// Looks at the head of a file that has been opened, and begins its text.
Inspection Inspect(TextSource& source, const ImportWish& wish);

/// Opens a file and looks at its head.
Inspection InspectPointFile(const std::string& path, const ImportWish& wish = {});

} // namespace terravo
