// The words at the head of a column, and what they say of it.
//
// Data: lists of words in English, Italian, German, French and Spanish, and the letters of
// instruments. Method: a word is compared without case, accents, units and punctuation.
#pragma once

#include "survey/import/ImportPlan.h"

#include <optional>
#include <string_view>
#include <vector>

namespace terravo {

/// What a line of column names says.
struct NamedHeader {
    std::vector<ColumnRole> columns; // Ignored where a word is not known
    std::size_t known = 0;           // words that are
    bool complete = false; // easting, northing and height once each, and in no order that has two
                           // meanings (y before x)
};

/// @param fields  of a line; UTF-8 or Latin-1.
NamedHeader ReadHeader(const std::vector<std::string_view>& fields);

} // namespace terravo
