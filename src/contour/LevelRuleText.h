// Level rules as users type them and hear of them.
//
// Data: the texts of fields and options, the texts of the run. Method: numbers are read with the
// user's decimal sign; each fault of a rule has a sentence that names the values at fault.
#pragma once

#include "contour/LevelRule.h"
#include "util/TextCatalogue.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

/// The values of a list that a user has typed, in increasing order, each once. They are separated
/// by blanks, semicolons, and by commas where the decimal sign is a period; where it is a comma, a
/// period is taken as well, and a comma at the end of a value separates.
/// @return nothing when something else than finite numbers stands there, or no number at all.
std::optional<std::vector<double>> ParseLevelList(std::string_view text, char decimalSeparator);

/// The one number that a user has typed, read like a list.
std::optional<double> ParseLevelNumber(std::string_view text, char decimalSeparator);

/// A number as a user would type it: up to 15 digits, no zeros behind, no power of ten unless the
/// number is very large or very small.
std::string TypedNumber(double value, char decimalSeparator);

/// How many levels a rule without a fault gives, and how many heights of a list it leaves out.
std::string ResultText(const LevelRule& rule, const Extent& range, const TextCatalogue& texts);

/// The heights of the levels as the labels show them, with blanks between; of very many the first
/// and the last ones.
/// @param values  from LevelValuesOf.
std::string TextOfLevels(const LevelRule& rule, const std::vector<double>& values,
                         char decimalSeparator);

/// What is wrong with a rule, as one sentence; empty for LevelFault::None.
std::string SentenceOf(LevelFault fault, const LevelRule& rule, const Extent& range,
                       const TextCatalogue& texts, char decimalSeparator);

} // namespace terravo
