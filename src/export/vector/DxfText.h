// Texts of users as a DXF file holds them.
//
// Data: UTF-8. Method: characters of the code page ANSI 1252 are its bytes, others \U+XXXX, in two
// halves beyond FFFF; what would be taken for a control code (%%d, ^J, \U+) is written so that it
// is shown letter for letter.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace terravo {

struct DxfText {
    std::string bytes;
    std::string cutOff; // UTF-8; what is beyond the most bytes that a value may have
};

/// Most bytes of a value.
inline constexpr std::size_t kMostDxfBytes = 255;

/// Control characters become blanks and broken characters question marks.
DxfText EncodeDxfText(std::string_view text);

} // namespace terravo
