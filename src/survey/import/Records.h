// One line of a text file of points, taken apart.
//
// Data: the bytes of a line, UTF-8 or one byte a character. Method: comments go first, then the
// line falls into fields at its separators, then a field is a number, a missing height or a text.
#pragma once

#include "survey/import/ImportPlan.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}
std::string_view Trimmed(std::string_view text);

/// True for a line that holds no data: nothing but blanks.
bool IsBlankLine(std::string_view line);

/// True for a line that begins with a comment mark ("#", ";", "//", "!", "*", "%"), unless the
/// mark is the separator.
bool IsCommentLine(std::string_view line, FieldSeparator separator);

/// The fields of a line, without the blanks around them; quotes hold a field together, as in CSV,
/// and are taken off (doubled ones inside stay doubled, see LabelText). Blanks that separate count
/// once, and at the ends of a line not at all. A separator behind the last field opens one more.
void SplitRecord(std::string_view line, FieldSeparator separator,
                 std::vector<std::string_view>& fields);

/// The same with what a comment mark opens behind the data left out: one after a blank, when three
/// numbers stand before it and what follows is no number.
void SplitWithoutComment(std::string_view line, FieldSeparator separator, char decimal,
                         std::vector<std::string_view>& fields);

/// The number that a field is: a sign, digits, the decimal sign, an exponent with E or D;
/// apostrophes and narrow or unbreakable blanks may divide thousands.
std::optional<double> NumberOf(std::string_view field, char decimal);

/// True where a height is missing: an empty field, "-", "nan", "void", "null", "none" in any
/// case, -9999, -99999, -32768, 1.70141e38 and what else is named.
bool IsVoid(std::string_view field, char decimal, const std::vector<std::string>& others);

/// A name or code as the program keeps it: UTF-8, doubled quotes single.
std::string LabelText(std::string_view field, TextEncoding encoding);

} // namespace terravo
