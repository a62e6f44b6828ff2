// Any text as one word of plain letters, for lists in the settings.
//
// Data: bytes. Method: everything but letters, digits and plain marks is written as %XX.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

std::string Escaped(std::string_view text);

/// @return nothing for a text that Escaped never gives.
std::optional<std::string> Unescaped(std::string_view text);

/// The parts between the separators: one more than there are of these.
std::vector<std::string_view> Split(std::string_view text, char at);

} // namespace terravo
