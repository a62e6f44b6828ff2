#include "util/EscapedText.h"

#include <charconv>

namespace terravo {
namespace {

bool IsPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("._-/").find(c) != std::string_view::npos;
}

} // namespace

std::string Escaped(std::string_view text) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string escaped;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (IsPlain(c)) {
            escaped += c;
        } else {
            escaped += {'%', kDigits[byte / 16], kDigits[byte % 16]};
        }
    }
    return escaped;
}

std::optional<std::string> Unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            plain += text[i];
            continue;
        }
        const std::string_view digits = text.substr(i + 1, 2);
        unsigned char byte = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (digits.size() != 2 || error != std::errc() || end != digits.data() + 2) {
            return std::nullopt;
        }
        plain += static_cast<char>(byte);
        i += 2;
    }
    return plain;
}

std::vector<std::string_view> Split(std::string_view text, char at) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(at);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
    }
}

} // namespace terravo
