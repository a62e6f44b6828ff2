// One line of a text file of points, taken apart.
//
// Data: the bytes of a line, UTF-8 or one byte a character; of several lines where a quoted field
// holds line breaks. Method: comments go first, then the line falls into fields at its separators,
// then a field is a number, a missing height or a text.
#pragma once

#include "survey/import/ImportPlan.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

/// Form feeds and vertical tabs move the paper and mean nothing else.
constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\f' || c == '\v';
}
std::string_view Trimmed(std::string_view text);

/// True for a line that holds no data: nothing but blanks, no-break ones included.
bool IsBlankLine(std::string_view line);

/// True for a line that begins with a comment mark ("#", ";", "//", "!", "*", "%"), unless the
/// mark is the separator.
bool IsCommentLine(std::string_view line, FieldSeparator separator);

/// The fields of a line, without the blanks around them; quotes hold a field together, as in CSV,
/// and are taken off (doubled ones inside stay doubled, see LabelText). Blanks that separate count
/// once, and at the ends of a line not at all; no-break blanks separate among them, unless they
/// divide the thousands of a number or stand in a text. A separator behind the last field opens one
/// more.
void SplitRecord(std::string_view line, FieldSeparator separator,
                 std::vector<std::string_view>& fields);

/// A line without what a comment mark opens behind the data: one after a blank and outside quotes,
/// when three numbers stand before it and what follows is no number.
std::string_view WithoutComment(std::string_view line, FieldSeparator separator, char decimal);

/// The fields of a line WithoutComment.
void SplitWithoutComment(std::string_view line, FieldSeparator separator, char decimal,
                         std::vector<std::string_view>& fields);

enum class Quotes : unsigned char {
    Closed,
    Open,    // the last field begins with a quote that no other closes: it may go on
    Stray,   // read so, a line would end outside quotes
    Records, // closed, but what they enclose has lines of three numbers
};

/// Whether a record ends at the end of some lines.
/// @param lines  WithoutComment. A quote that is all of the last field closes itself: it says "as
///               above".
Quotes QuotesOf(std::string_view lines, FieldSeparator separator, char decimal);

/// Most lines that one record is sought on.
inline constexpr int kMostLinesOfRecord = 64;

/// The number that a field is: a sign (U+2212 is one), digits, the decimal sign, an exponent with E
/// or D; apostrophes and narrow or no-break blanks may divide thousands. So may that of comma and
/// point that is not the decimal sign, where it can be nothing else: twice, or before the decimal
/// sign.
std::optional<double> NumberOf(std::string_view field, char decimal);

/// True where a height is missing: an empty field, "-", "nan", "void", "null", "none" in any
/// case, -9999, -99999, -32768, 1.70141e38 and what else is named.
bool IsVoid(std::string_view field, char decimal, const std::vector<std::string>& others);

/// A name or code as the program keeps it: UTF-8, doubled quotes single, a line break a blank.
std::string LabelText(std::string_view field, TextEncoding encoding);

} // namespace terravo
