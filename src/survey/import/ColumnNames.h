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

/// The same of the whole line, where that has more words that are known: names may be divided by
/// another separator than the records.
NamedHeader ReadHeader(const std::vector<std::string_view>& fields, std::string_view line);

/// The columns of a line that names coordinates among the records or above them.
/// @param separator  of the records; tried first, and blanks next.
/// @return nothing for a line with a number, with less than two coordinates named once each, or
///         with more than one word in three unknown; of a comment, which may be prose, each word
///         has to be known and each coordinate named.
std::optional<std::vector<ColumnRole>> NamesIn(std::string_view line, FieldSeparator separator);

/// The place of the column that names the line which a vertex belongs to, from 0: the first one
/// with a word for a line, else the first one that says name.
std::optional<std::size_t> LineColumn(const std::vector<std::string_view>& fields);

/// True where two rows of columns have the coordinates in the same places.
bool HaveSameCoordinates(const std::vector<ColumnRole>& a, const std::vector<ColumnRole>& b);

} // namespace terravo
