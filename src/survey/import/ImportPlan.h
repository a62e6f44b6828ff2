// How a text file of points is to be read.
//
// Data: plain values: encoding, separator, decimal sign, the lines at the top that hold no points,
// what each column means, what stands for a missing height. Method: an inspection proposes a plan,
// a user or an option changes it, the reader carries it out.
#pragma once

#include "util/Array1.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

enum class ColumnRole : unsigned char { Ignored, Name, Easting, Northing, Height, Code };
enum class FieldSeparator : unsigned char { Comma, Semicolon, Tab, Blank, Bar };
enum class TextEncoding : unsigned char { Utf8, Latin1, Utf16Little, Utf16Big };

struct ImportPlan {
    /// Numbers read three at a time, as ReadPoints does; all but the encoding is without meaning.
    bool freeList = false;
    TextEncoding encoding = TextEncoding::Utf8;
    FieldSeparator separator = FieldSeparator::Comma;
    char decimal = '.';
    Index headerLines = 0; // at the top, of any kind
    std::vector<ColumnRole> columns;
    /// The last column is a code that takes the rest of the line.
    bool codeTakesRest = false;
    /// Fields of a record, those that are ignored included; 0 where it may vary.
    std::size_t fieldCount = 0;
    /// No field but those of the coordinates may be a number: what makes a file certain.
    bool othersAreText = false;
    /// Texts for a missing height beside the usual ones, as they stand in the file.
    std::vector<std::string> voids;

    bool operator==(const ImportPlan&) const = default;
};

/// "xyz", "pnezd" and the like, or a list such as "p,n,e,z,c,-".
std::string NameOfColumns(const std::vector<ColumnRole>& columns);

/// The columns of such a name or list; a list has p, e or x, n or y, z or h, c and -, each but the
/// last once at most, and e, n and z must be there.
/// @return nothing for any other text.
std::optional<std::vector<ColumnRole>> ParseColumns(std::string_view text);

/// "comma", "semicolon", "tab", "blank" or "bar".
const char* NameOf(FieldSeparator separator);
std::optional<FieldSeparator> ParseSeparator(std::string_view name);
char CharacterOf(FieldSeparator separator);

/// "utf-8", "latin-1" or "utf-16".
const char* NameOf(TextEncoding encoding);

/// True for the column of a coordinate.
constexpr bool IsCoordinate(ColumnRole role) {
    return role == ColumnRole::Easting || role == ColumnRole::Northing ||
           role == ColumnRole::Height;
}

} // namespace terravo
