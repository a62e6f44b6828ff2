#include "export/vector/DxfText.h"

#include "export/vector/CleanText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace terravo {
namespace {

// What the code page has in the places of the control characters from 80 to 9F.
constexpr std::array<std::pair<std::uint32_t, unsigned char>, 27> kMoved{
    {{0x20ac, 0x80}, {0x201a, 0x82}, {0x0192, 0x83}, {0x201e, 0x84}, {0x2026, 0x85}, {0x2020, 0x86},
     {0x2021, 0x87}, {0x02c6, 0x88}, {0x2030, 0x89}, {0x0160, 0x8a}, {0x2039, 0x8b}, {0x0152, 0x8c},
     {0x017d, 0x8e}, {0x2018, 0x91}, {0x2019, 0x92}, {0x201c, 0x93}, {0x201d, 0x94}, {0x2022, 0x95},
     {0x2013, 0x96}, {0x2014, 0x97}, {0x02dc, 0x98}, {0x2122, 0x99}, {0x0161, 0x9a}, {0x203a, 0x9b},
     {0x0153, 0x9c}, {0x017e, 0x9e}, {0x0178, 0x9f}}};

// The byte of the code page; 0 where it has none.
unsigned char ByteOf(std::uint32_t character) {
    if (character < 0x80 || (character >= 0xa0 && character < 0x100)) {
        return static_cast<unsigned char>(character);
    }
    const auto* const moved = std::find_if(
        kMoved.begin(), kMoved.end(), [&](const auto& pair) { return pair.first == character; });
    return moved == kMoved.end() ? 0 : moved->second;
}

void AppendUnit(std::string& out, std::uint32_t unit) {
    out += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4) {
        out += "0123456789ABCDEF"[unit >> shift & 0xfU];
    }
}

void AppendEscaped(std::string& out, std::uint32_t character) {
    if (character < 0x10000) {
        AppendUnit(out, character);
        return;
    }
    const std::uint32_t rest = character - 0x10000;
    AppendUnit(out, 0xd800 + (rest >> 10));
    AppendUnit(out, 0xdc00 + (rest & 0x3ff));
}

// Takes the first character of valid UTF-8.
std::uint32_t TakeCharacter(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const std::size_t length = first < 0x80 ? 1 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
    std::uint32_t character = length == 1 ? first : first & (0x7fU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3fU);
    }
    text.remove_prefix(length);
    return character;
}

// Takes a character and writes it so that no reader takes it for a part of a control code.
// @param before  the character in front of it, if it is ASCII.
std::string TakeLetters(std::string_view& text, char before) {
    std::string letters;
    if (text.starts_with("%%") || (text[0] == '%' && before == '%')) {
        text.remove_prefix(1);
        letters = "%%%";
    } else if (text.starts_with("\\U+") || text.starts_with("\\M+")) {
        text.remove_prefix(1);
        AppendUnit(letters, '\\');
    } else if (text[0] == '^') {
        text.remove_prefix(1);
        letters = "^ ";
    } else {
        const std::uint32_t character = TakeCharacter(text);
        const unsigned char byte = ByteOf(character);
        byte != 0 ? letters.push_back(static_cast<char>(byte)) : AppendEscaped(letters, character);
    }
    return letters;
}

bool IsPlain(std::string_view text) {
    return text.size() <= kMostDxfBytes && std::all_of(text.begin(), text.end(), [](char c) {
               return c >= ' ' && c < 0x7f && c != '%' && c != '\\' && c != '^';
           });
}

} // namespace

DxfText EncodeDxfText(std::string_view text) {
    if (IsPlain(text)) {
        return {std::string(text), {}};
    }
    const std::string clean = CleanText(text);
    DxfText result;
    char before = 0;
    for (std::string_view left = clean; !left.empty();) {
        const std::string_view rest = left;
        const std::string letters = TakeLetters(left, before);
        if (result.bytes.size() + letters.size() > kMostDxfBytes) {
            result.cutOff = rest;
            break;
        }
        result.bytes += letters;
        before = rest[0];
    }
    return result;
}

} // namespace terravo
