// Numbers between blanks, as XML files hold them.
//
// Data: a text. Method: numbers are taken off its front by std::from_chars; what stands behind one
// must be a blank, a line end or nothing.
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace terravo::NumberFields {

/// Blanks, tabs and line ends.
inline bool IsBlank(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

/// The text without the blanks at its front.
inline std::string_view WithoutBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

/// Takes a number off the front of a text, with the blanks before it. False when there is none.
template <class Number>
bool Take(std::string_view& text, Number& number) {
    text = WithoutBlanks(text);
    const std::from_chars_result end =
        std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc()) {
        return false;
    }
    text.remove_prefix(static_cast<std::size_t>(end.ptr - text.data()));
    return text.empty() || IsBlank(text.front());
}

/// Reads a text of so many numbers and nothing else. False when it is of another form.
template <class Number, std::size_t count>
bool Read(std::string_view text, std::array<Number, count>& numbers) {
    for (Number& number : numbers) {
        if (!Take(text, number)) {
            return false;
        }
    }
    return WithoutBlanks(text).empty();
}

} // namespace terravo::NumberFields
