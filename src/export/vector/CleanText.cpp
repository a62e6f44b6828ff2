#include "export/vector/CleanText.h"

#include <cstddef>
#include <cstdint>

namespace terravo {
namespace {

constexpr unsigned char kDelete = 0x7f;

unsigned char ByteAt(std::string_view text, std::size_t i) {
    return static_cast<unsigned char>(text[i]);
}

bool IsControl(unsigned char byte) {
    return byte < ' ' || byte == kDelete;
}

// Length of the character that begins with the byte; 0 for a byte that begins none.
std::size_t LengthBy(unsigned char first) {
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xc2 && first < 0xe0) {
        return 2;
    }
    if (first >= 0xe0 && first < 0xf0) {
        return 3;
    }
    return first >= 0xf0 && first < 0xf5 ? 4 : 0;
}

// Halves of pairs, the two numbers that are never characters, and what is written too long.
bool IsCharacter(std::uint32_t code, std::size_t length) {
    constexpr std::uint32_t kFirstOf[] = {0, 0, 0x80, 0x800, 0x10000};
    return code >= kFirstOf[length] && code <= 0x10ffff && !(code >= 0xd800 && code < 0xe000) &&
           (code & 0xfffe) != 0xfffe;
}

// Length of the whole, valid character at a place; 0 when there is none.
std::size_t CharacterAt(std::string_view text, std::size_t at) {
    const std::size_t length = LengthBy(ByteAt(text, at));
    if (length <= 1 || at + length > text.size()) {
        return length == 1 ? 1 : 0;
    }
    std::uint32_t code = ByteAt(text, at) & (0x7fU >> length);
    for (std::size_t i = at + 1; i < at + length; ++i) {
        const unsigned char byte = ByteAt(text, i);
        if ((byte & 0xc0) != 0x80) {
            return 0;
        }
        code = code << 6 | (byte & 0x3fU);
    }
    return IsCharacter(code, length) ? length : 0;
}

// Control characters of two bytes, U+0080 to U+009F.
bool IsWideControl(std::string_view character) {
    return character.size() == 2 && ByteAt(character, 0) == 0xc2 && ByteAt(character, 1) < 0xa0;
}

} // namespace

std::string CleanText(std::string_view text) {
    std::string clean;
    clean.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = CharacterAt(text, i);
        const std::string_view character = text.substr(i, length);
        if (length == 0) {
            clean += '?';
        } else if (IsControl(ByteAt(text, i)) || IsWideControl(character)) {
            clean += ' ';
        } else {
            clean += character;
        }
        i += length == 0 ? 1 : length;
    }
    return clean;
}

bool IsCleanText(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = CharacterAt(text, i);
        if (length == 0 || IsControl(ByteAt(text, i)) || IsWideControl(text.substr(i, length))) {
            return false;
        }
        i += length;
    }
    return true;
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t kMost = 100; // bytes
    constexpr std::size_t kEnd = 30;
    if (text.size() <= kMost) {
        return '"' + std::string(text) + '"';
    }
    const auto isInside = [text](std::size_t at) { return (ByteAt(text, at) & 0xc0) == 0x80; };
    std::size_t head = kMost - kEnd;
    while (isInside(head)) {
        --head;
    }
    std::size_t tail = text.size() - kEnd;
    while (tail < text.size() && isInside(tail)) {
        ++tail;
    }
    return '"' + std::string(text.substr(0, head)) + "..." + std::string(text.substr(tail)) + '"';
}

} // namespace terravo
