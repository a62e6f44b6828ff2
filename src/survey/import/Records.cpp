#include "survey/import/Records.h"

#include "util/DecimalText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace terravo {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The length of a comment mark at the start of a text, 0 for none.
std::size_t MarkLength(std::string_view text, FieldSeparator separator) {
    if (text.empty() || text[0] == CharacterOf(separator)) {
        return 0;
    }
    if (text.starts_with("//")) {
        return 2;
    }
    return std::string_view("#;!*%").find(text[0]) != std::string_view::npos ? 1 : 0;
}

// The length of what divides thousands at the start of a text, 0 for nothing: an apostrophe,
// straight or curved, a blank that does not separate fields, and blanks that keep a number
// together, in UTF-8 or Latin-1.
std::size_t ThousandsMark(std::string_view text) {
    for (const std::string_view mark :
         {"'", " ", "\xE2\x80\x99", "\xE2\x80\xAF", "\xE2\x80\x89", "\xC2\xA0", "\xA0"}) {
        if (text.starts_with(mark)) {
            return mark.size();
        }
    }
    return 0;
}

bool BeginsNumber(std::string_view text) {
    const std::size_t first = text.find_first_not_of("+-.,");
    return first <= 2 && first < text.size() && IsDigit(text[first]);
}

// Splits at one character, minding quotes.
void SplitAt(std::string_view line, char separator, std::vector<std::string_view>& fields) {
    for (std::size_t begin = 0;;) {
        std::size_t from = begin;
        while (from < line.size() && line[from] == ' ') {
            ++from;
        }
        if (from < line.size() && line[from] == '"') {
            std::size_t close = line.find('"', from + 1);
            while (close != std::string_view::npos && close + 1 < line.size() &&
                   line[close + 1] == '"') {
                close = line.find('"', close + 2);
            }
            const std::size_t after =
                close == std::string_view::npos ? close : line.find_first_not_of(' ', close + 1);
            if (close != std::string_view::npos &&
                (after == std::string_view::npos || line[after] == separator)) {
                fields.push_back(line.substr(from + 1, close - from - 1));
                if (after == std::string_view::npos) {
                    return;
                }
                begin = after + 1;
                continue;
            }
        }
        const std::size_t end = line.find(separator, begin);
        fields.push_back(Trimmed(line.substr(begin, end - begin)));
        if (end == std::string_view::npos) {
            return;
        }
        begin = end + 1;
    }
}

void SplitAtBlanks(std::string_view line, std::vector<std::string_view>& fields) {
    for (std::size_t begin = 0;;) {
        while (begin < line.size() && IsBlank(line[begin])) {
            ++begin;
        }
        if (begin == line.size()) {
            return;
        }
        std::size_t end = begin;
        if (line[begin] == '"') {
            const std::size_t close = line.find('"', begin + 1);
            if (close != std::string_view::npos &&
                (close + 1 == line.size() || IsBlank(line[close + 1]))) {
                fields.push_back(line.substr(begin + 1, close - begin - 1));
                begin = close + 1;
                continue;
            }
        }
        while (end < line.size() && !IsBlank(line[end])) {
            ++end;
        }
        fields.push_back(line.substr(begin, end - begin));
        begin = end;
    }
}

// Copies a number as from_chars wants it; nothing where thousands are divided wrongly or the text
// is too long for a number.
class PlainNumber {
public:
    PlainNumber(std::string_view field, char decimal) {
        int group = -1; // digits since the last mark
        for (std::size_t i = 0; i < field.size();) {
            const std::size_t mark = length_ > 0 ? ThousandsMark(field.substr(i)) : 0;
            if (mark > 0) {
                const bool fits = IsDigit(text_[length_ - 1]) && !hasDecimal_ &&
                                  (group < 0 ? length_ <= 4 : group == 3);
                sound_ = sound_ && fits;
                group = 0;
                i += mark;
                continue;
            }
            char c = field[i++];
            if (group >= 0 && !hasDecimal_) {
                if (IsDigit(c)) {
                    ++group;
                } else {
                    sound_ = sound_ && group == 3;
                }
            }
            if (c == decimal) {
                hasDecimal_ = true;
                c = '.';
            } else if (c == '.' || c == ',') {
                sound_ = false;
            } else if (c == 'D' || c == 'd' || c == 'E') {
                hasDecimal_ = true;
                c = 'e';
            }
            Add(c);
        }
        sound_ = sound_ && (group < 0 || hasDecimal_ || group == 3);
    }

    [[nodiscard]] std::optional<double> Value() const {
        const char* begin = text_.data();
        const char* const end = begin + length_;
        if (!sound_ || begin == end) {
            return std::nullopt;
        }
        const bool signedPlus = *begin == '+';
        begin += signedPlus ? 1 : 0;
        const char* const digits = begin + (begin != end && *begin == '-' ? 1 : 0);
        if (digits == end || (signedPlus && digits != begin) ||
            !(IsDigit(*digits) || *digits == '.')) {
            return std::nullopt;
        }
        double value = 0;
        const auto read = std::from_chars(begin, end, value);
        const bool whole = read.ec == std::errc{} && read.ptr == end && std::isfinite(value);
        return whole ? std::optional(value) : std::nullopt;
    }

private:
    void Add(char c) {
        if (length_ == text_.size()) {
            sound_ = false;
        } else {
            text_[length_++] = c;
        }
    }

    std::array<char, 64> text_{};
    std::size_t length_ = 0;
    bool hasDecimal_ = false;
    bool sound_ = true;
};

bool EqualIgnoringCase(std::string_view text, std::string_view lower) {
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
    });
}

} // namespace

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool IsBlankLine(std::string_view line) {
    return Trimmed(line).empty();
}

bool IsCommentLine(std::string_view line, FieldSeparator separator) {
    return MarkLength(Trimmed(line), separator) > 0;
}

void SplitRecord(std::string_view line, FieldSeparator separator,
                 std::vector<std::string_view>& fields) {
    fields.clear();
    if (separator == FieldSeparator::Blank) {
        SplitAtBlanks(line, fields);
    } else {
        SplitAt(line, CharacterOf(separator), fields);
    }
}

void SplitWithoutComment(std::string_view line, FieldSeparator separator, char decimal,
                         std::vector<std::string_view>& fields) {
    constexpr int kCoordinates = 3;
    for (std::size_t at = line.find_first_of("#;!*%/", 1); at != std::string_view::npos;
         at = line.find_first_of("#;!*%/", at + 1)) {
        const std::size_t mark = MarkLength(line.substr(at), separator);
        if (mark == 0 || !IsBlank(line[at - 1]) || BeginsNumber(Trimmed(line.substr(at + mark)))) {
            continue;
        }
        SplitRecord(Trimmed(line.substr(0, at)), separator, fields);
        const auto numbers =
            std::count_if(fields.begin(), fields.end(), [decimal](std::string_view field) {
                return NumberOf(field, decimal).has_value();
            });
        if (numbers >= kCoordinates) {
            return;
        }
    }
    SplitRecord(line, separator, fields);
}

std::optional<double> NumberOf(std::string_view field, char decimal) {
    if (field.empty()) {
        return std::nullopt;
    }
    return PlainNumber(field, decimal).Value();
}

bool IsVoid(std::string_view field, char decimal, const std::vector<std::string>& others) {
    if (field.empty() || field == "-") {
        return true;
    }
    for (const std::string_view word : {"nan", "void", "null", "none"}) {
        if (EqualIgnoringCase(field, word)) {
            return true;
        }
    }
    const std::optional<double> number = NumberOf(field, decimal);
    if (number) {
        for (const double value : {-9999.0, -99999.0, -32768.0}) {
            if (std::fabs(*number - value) <= 0) {
                return true;
            }
        }
        constexpr double kBlanked = 1.70141e38;
        if (std::fabs(*number) > kBlanked * 0.9999) {
            return true;
        }
    }
    return std::any_of(others.begin(), others.end(), [&](const std::string& other) {
        const std::optional<double> value = NumberOf(other, '.');
        return field == other || (number && value && std::fabs(*number - *value) <= 0);
    });
}

std::string LabelText(std::string_view field, TextEncoding encoding) {
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const auto byte = static_cast<unsigned char>(field[i]);
        if (encoding == TextEncoding::Latin1 && byte >= 0x80U) {
            text += static_cast<char>(0xC0U | byte >> 6U);
            text += static_cast<char>(0x80U | (byte & 0x3FU));
        } else {
            text += field[i];
        }
        if (field[i] == '"' && i + 1 < field.size() && field[i + 1] == '"') {
            ++i;
        }
    }
    return text;
}

} // namespace terravo
