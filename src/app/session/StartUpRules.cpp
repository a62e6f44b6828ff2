#include "app/session/StartUpRules.h"

#include "util/PathText.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace terravo {
namespace {

char UpperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool StartsWithAnyCase(std::string_view text, std::string_view upperCaseStart) {
    return text.size() >= upperCaseStart.size() &&
           std::equal(upperCaseStart.begin(), upperCaseStart.end(), text.begin(),
                      [](char a, char b) { return a == UpperCase(b); });
}

bool ContinuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

bool BeginsLongCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0xC0U;
}

// Text is UTF-8, so one character may be several bytes. A path may hold any bytes: one that
// continues nothing is a character of its own.
std::string WithoutFirstAndLastCharacter(const std::string& text) {
    std::size_t begin = std::min<std::size_t>(1, text.size());
    while (begin < text.size() && BeginsLongCharacter(text[0]) && ContinuesCharacter(text[begin])) {
        ++begin;
    }
    if (begin == text.size()) {
        return {};
    }
    std::size_t last = text.size() - 1;
    while (last > begin && ContinuesCharacter(text[last])) {
        --last;
    }
    if (!BeginsLongCharacter(text[last])) {
        last = text.size() - 1;
    }
    return text.substr(begin, last - begin);
}

std::string DecodePercent(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned byte = 0;
        const char* const digits = text.data() + i + 1;
        if (text[i] == '%' && text.size() - i > 2 &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            decoded += static_cast<char>(byte);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

// "/C:/..." as an address writes a path with a drive letter.
bool HasDriveLetter(std::string_view path) {
    return path.size() > 3 && path[2] == ':' && UpperCase(path[1]) >= 'A' &&
           UpperCase(path[1]) <= 'Z';
}

std::optional<std::string> PathFromAddress(std::string_view hostAndPath) {
    const std::size_t slash = std::min(hostAndPath.find('/'), hostAndPath.size());
    const std::string_view host = hostAndPath.substr(0, slash);
    constexpr std::string_view kThisMachine = "LOCALHOST";
    if (!host.empty() &&
        (host.size() != kThisMachine.size() || !StartsWithAnyCase(host, kThisMachine))) {
        return std::nullopt;
    }
    const std::string path = DecodePercent(hostAndPath.substr(slash));
    if (path.find('\0') != std::string::npos) {
        // The system would end the path there and find another file.
        return std::nullopt;
    }
    if (FileExists(path)) {
        return path;
    }
    if (HasDriveLetter(path) && FileExists(path.substr(1))) {
        return path.substr(1);
    }
    return std::nullopt;
}

} // namespace

std::string RawCommandLine(std::span<const std::string> arguments) {
    if (arguments.empty()) {
        return {};
    }
    const std::string& first = arguments.front();
    const bool quoted = first.size() > 1 && first.front() == '"' && first.back() == '"';
    return quoted ? first : '"' + first + '"';
}

std::string StartUpCandidate(const std::optional<std::string>& clipboardText,
                             const std::string& rawCommandLine) {
    return rawCommandLine.empty() ? clipboardText.value_or("")
                                  : WithoutFirstAndLastCharacter(rawCommandLine);
}

std::optional<std::string> PathFromClipboard(const std::string& text) {
    constexpr std::string_view kScheme = "FILE://";
    if (!StartsWithAnyCase(text, kScheme)) {
        return text;
    }
    const std::string_view firstLine = std::string_view(text).substr(0, text.find_first_of("\r\n"));
    return PathFromAddress(firstLine.substr(kScheme.size()));
}

bool IsStartUpFile(const std::string& candidate) {
    return candidate.size() >= 3 &&
           StartsWithAnyCase(std::string_view(candidate).substr(candidate.size() - 3), "QRW");
}

std::optional<std::string> AcceptedStartUpFile(const std::optional<std::string>& clipboardText,
                                               const std::string& rawCommandLine) {
    const std::optional<std::string> clipboardPath =
        clipboardText ? PathFromClipboard(*clipboardText) : std::nullopt;
    std::string candidate = StartUpCandidate(clipboardPath, rawCommandLine);
    if (!IsStartUpFile(candidate)) {
        return std::nullopt;
    }
    return candidate;
}

ParentState ParentStateFor(const std::optional<std::string>& clipboardText) {
    if (!clipboardText) {
        return ParentState::Maximised;
    }
    return AcceptedStartUpFile(clipboardText, "") ? ParentState::Minimised
                                                  : ParentState::AsDesigned;
}

bool IsCompanionFile(const std::string& path, const std::string& workFolder) {
    return path == workFolder + "my_point.qrw";
}

} // namespace terravo
