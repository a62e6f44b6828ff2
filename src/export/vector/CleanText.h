// Texts that every format can hold: names of points, of surveys.
//
// Data: bytes that are meant to be UTF-8. Method: what is not becomes a question mark, control
// characters and line ends become blanks; the rest stays letter for letter.
#pragma once

#include <string>
#include <string_view>

namespace terravo {

/// The text with what no file format holds replaced.
std::string CleanText(std::string_view text);

/// Whether CleanText leaves the text as it is.
bool IsCleanText(std::string_view text);

/// A clean text in quotation marks, for a sentence; of a long one the middle is left out.
std::string Quoted(std::string_view text);

} // namespace terravo
