// What a text of a DXF file shows.
//
// Data: bytes of the code page ANSI 1252. Method: \U+XXXX, %%% and "^ " become the characters that
// they stand for; every other control code would show something else than letters.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace terravo {

/// The text as UTF-8; nothing where it has a control code, a byte that the code page does not have,
/// or half a character.
std::optional<std::string> ShownDxfText(std::string_view bytes);

} // namespace terravo
