// Numbers as text, and text as numbers: the printed form of the files, the formats of the screen,
// the leading number of a field.
//
// Data: doubles and single-byte text. Method: every form starts from the decimal value of at most
// 15 significant digits, made with <charconv>, so the user's locale has no say; the screen forms
// take the decimal separator as an argument.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace terravo::NumberText {

/// Appends the shortest text that keeps the value, up to 15 significant digits: period as decimal
/// point, no zero before it, no trailing zeros, exponent as in 1.5E-07 or 2E+20 for magnitudes
/// below 1E-04 and from 1E+15. Zero of either sign is "0".
void AppendGeneral(std::string& out, double value);
std::string General(double value);

/// Appends a number in printed form: a sign position (blank or "-"), the number, one blank.
void AppendPrinted(std::string& out, double value);
void AppendPrinted(std::string& out, std::int64_t value);

/// Appends one line of three printed numbers in zones 14 characters wide, ended by CR LF.
void AppendPrintedLine(std::string& out, double x, double y, double z);
void AppendPrintedLine(std::string& out, std::int64_t a, std::int64_t b, std::int64_t c);

/// A single-precision number as people write it: the shortest text that keeps it, with a zero
/// before the point.
std::string SingleText(float value);

/// The value under a pattern such as "#0.0##": the zeros right of the point are digits always
/// shown, the "#" digits shown when they are not trailing zeros; at least one digit left of the
/// point. Rounds half away from zero on the decimal value. A result of zero has no sign.
/// @param separator  written in place of the period.
std::string FormatScreen(double value, std::string_view pattern, char separator);

/// The smallest number of so many significant digits that is not below a value: what holds of the
/// value holds of it; "0" where that is not above 0.
std::string RoundedUp(double value, int digits, char separator);

/// Reads the number at the start of a text: blanks skipped, "." as decimal point, stopping at the
/// first character that cannot continue it; 0 when there is none.
double LeadingNumber(std::string_view text);

} // namespace terravo::NumberText
