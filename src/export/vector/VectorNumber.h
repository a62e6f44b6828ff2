// Numbers of the vector formats: the shortest decimal text that reads back to the same double.
//
// Data: finite doubles. Method: std::to_chars without an exponent, so that no locale and no poor
// reader gets in between.
#pragma once

#include <cstdint>
#include <string>

namespace terravo::VectorNumber {

/// Appends a number with a period and at least one decimal: 100000.0, -0.5. Zero has no sign.
/// Throws AppError for a number that is not finite.
void AppendReal(std::string& out, double value);

/// Appends a number as short as it goes: 100000, -0.5. Zero has no sign.
/// Throws AppError for a number that is not finite.
void AppendShort(std::string& out, double value);

/// Appends a whole number.
void AppendWhole(std::string& out, std::int64_t value);

} // namespace terravo::VectorNumber
