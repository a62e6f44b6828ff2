// The head of a file, read with one separator and decimal sign.
//
// Data: its lines. Method: every separator and decimal sign that may be meant is tried; the reading
// that gives the most lines three numbers is the best.
#pragma once

#include "survey/import/Inspection.h"

#include <string_view>
#include <vector>

namespace terravo {

/// One record as one way of reading sees it.
struct HeadRecord {
    Index line = 0; // its last one, from 1
    std::vector<std::string_view> fields;
    std::size_t numbers = 0;
    std::string_view text; // the whole line, or lines
};

struct HeadReading {
    FieldSeparator separator;
    char decimal;
    std::vector<HeadRecord> records; // all lines with data, those above the first record included
    std::vector<std::string_view> comments; // above the first of them
    std::size_t first = 0;                  // of the records that are points, headers stand above
    std::size_t fieldCount = 0;             // that most records have
    std::size_t numbers = 0;                // likewise
    double agreement = 0;                   // part of the records that have both
};

/// The lines of a text, without their ends.
/// @param isAll  a last line without an end is whole.
std::vector<std::string_view> LinesOf(std::string_view text, bool isAll);

/// The best reading of some lines, as far as a wish leaves a choice.
HeadReading BestReading(const std::vector<std::string_view>& lines, const ImportWish& wish);

} // namespace terravo
