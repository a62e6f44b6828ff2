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

constexpr std::string_view kMinus = "\xE2\x88\x92";

// The length of a blank that does not break lines at the start of a text, 0 for none: no-break,
// narrow and thin ones, in UTF-8 or Latin-1.
std::size_t HardBlank(std::string_view text) {
    for (const std::string_view blank : {"\xC2\xA0", "\xE2\x80\xAF", "\xE2\x80\x89", "\xA0"}) {
        if (text.starts_with(blank)) {
            return blank.size();
        }
    }
    return 0;
}

// The length of what divides thousands at the start of a text, 0 for nothing: an apostrophe,
// straight or curved, and a blank that does not separate fields.
std::size_t ThousandsMark(std::string_view text) {
    for (const std::string_view mark : {"'", " ", "\xE2\x80\x99"}) {
        if (text.starts_with(mark)) {
            return mark.size();
        }
    }
    return HardBlank(text);
}

// In UTF-8 the byte of the Latin-1 blank ends other characters, too.
std::string_view WithoutHardBlanks(std::string_view text) {
    while (const std::size_t length = HardBlank(text)) {
        text.remove_prefix(length);
    }
    for (std::size_t length = 1; length != 0;) {
        length = 0;
        for (const std::size_t tried : {std::size_t{3}, std::size_t{2}}) {
            if (text.size() >= tried && HardBlank(text.substr(text.size() - tried)) == tried) {
                length = tried;
            }
        }
        const bool isLatin =
            length == 0 && text.ends_with('\xA0') &&
            (text.size() == 1 || static_cast<unsigned char>(text[text.size() - 2]) < 0x80U);
        length = isLatin ? 1 : length;
        text.remove_suffix(length);
    }
    return text;
}

bool BeginsNumber(std::string_view text) {
    text.remove_prefix(text.starts_with(kMinus) ? kMinus.size() : 0);
    const std::size_t first = text.find_first_not_of("+-.,");
    return first <= 2 && first < text.size() && IsDigit(text[first]);
}

// The quote that closes the one at a place; doubled ones stand for themselves.
std::size_t CloseOf(std::string_view text, std::size_t quote) {
    std::size_t close = text.find('"', quote + 1);
    while (close != std::string_view::npos && close + 1 < text.size() && text[close + 1] == '"') {
        close = text.find('"', close + 2);
    }
    return close;
}

// The place behind the blanks that only stand between a separator and a field.
std::size_t SkipPadding(std::string_view line, std::size_t at, char separator) {
    while (at < line.size() && IsBlank(line[at]) && line[at] != separator) {
        ++at;
    }
    return at;
}

// Splits at one character, minding quotes.
void SplitAt(std::string_view line, char separator, std::vector<std::string_view>& fields) {
    for (std::size_t begin = 0;;) {
        const std::size_t from = SkipPadding(line, begin, separator);
        if (from < line.size() && line[from] == '"') {
            const std::size_t close = CloseOf(line, from);
            const std::size_t after =
                close == std::string_view::npos ? close : SkipPadding(line, close + 1, separator);
            if (close != std::string_view::npos &&
                (after == line.size() || line[after] == separator)) {
                fields.push_back(line.substr(from + 1, close - from - 1));
                if (after == line.size()) {
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

bool IsNumberOfAnySign(std::string_view text) {
    return NumberOf(text, '.') || NumberOf(text, ',');
}

// Adds what stands between blanks. No-break blanks in it separate where that makes more numbers.
void AddBetweenBlanks(std::string_view text, std::vector<std::string_view>& fields) {
    text = WithoutHardBlanks(text);
    if (text.find_first_of("\xA0\xE2") == std::string_view::npos || IsNumberOfAnySign(text)) {
        if (!text.empty()) {
            fields.push_back(text);
        }
        return;
    }
    const std::size_t before = fields.size();
    std::ptrdiff_t numbers = 0;
    for (std::size_t begin = 0, at = 0; begin < text.size();) {
        const std::size_t blank = at == text.size() ? 0 : HardBlank(text.substr(at));
        if (at == text.size() || blank > 0) {
            if (at > begin) {
                fields.push_back(text.substr(begin, at - begin));
                numbers += IsNumberOfAnySign(fields.back()) ? 1 : 0;
            }
            begin = at += blank;
        } else {
            ++at;
        }
    }
    if (numbers < 2) {
        fields.resize(before);
        fields.push_back(text);
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
            const std::size_t close = CloseOf(line, begin);
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
        AddBetweenBlanks(line.substr(begin, end - begin), fields);
        begin = end;
    }
}

// Copies a number as from_chars wants it; nothing where thousands are divided wrongly or the text
// is too long for a number.
class PlainNumber {
public:
    PlainNumber(std::string_view field, char decimal) : decimal_(decimal) {
        for (std::size_t i = 0; i < field.size();) {
            i += Take(field.substr(i));
        }
        EndGroup();
        // Once and without a decimal sign behind it, it might be one.
        sound_ =
            sound_ && (signMarks_ == 0 || otherMarks_ == 0) && (signMarks_ != 1 || hasDecimal_);
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
    // Takes a character or a mark, and says how long it is.
    std::size_t Take(std::string_view rest) {
        const bool afterDigit = length_ > 0 && IsDigit(text_[length_ - 1]);
        if (rest.starts_with(kMinus)) {
            Add('-');
            return kMinus.size();
        }
        const bool isSignMark = (rest[0] == ',' || rest[0] == '.') && rest[0] != decimal_;
        const std::size_t mark = isSignMark ? 1 : length_ > 0 ? ThousandsMark(rest) : 0;
        if (mark > 0) {
            sound_ =
                sound_ && afterDigit && !isWhole_ && (isGrouped_ ? digits_ == 3 : digits_ <= 3);
            ++(isSignMark ? signMarks_ : otherMarks_);
            isGrouped_ = true;
            digits_ = 0;
            return mark;
        }
        TakePlain(rest[0]);
        return 1;
    }

    void TakePlain(char c) {
        if (IsDigit(c)) {
            ++digits_;
        } else if (c == decimal_) {
            EndGroup();
            hasDecimal_ = true;
            c = '.';
        } else if (c == 'D' || c == 'd' || c == 'E' || c == 'e') {
            EndGroup();
            c = 'e';
        }
        Add(c);
    }

    // The digits before the decimal sign or the exponent are all.
    void EndGroup() {
        sound_ = sound_ && (isWhole_ || !isGrouped_ || digits_ == 3);
        isWhole_ = true;
    }

    void Add(char c) {
        if (length_ == text_.size()) {
            sound_ = false;
        } else {
            text_[length_++] = c;
        }
    }

    char decimal_;
    std::array<char, 64> text_{};
    std::size_t length_ = 0;
    int digits_ = 0; // since the start or the last mark
    int signMarks_ = 0;
    int otherMarks_ = 0;
    bool isGrouped_ = false;
    bool isWhole_ = false; // what divides thousands can no longer come
    bool hasDecimal_ = false;
    bool sound_ = true;
};

bool HasThreeNumbers(std::string_view line, FieldSeparator separator, char decimal) {
    constexpr int kCoordinates = 3;
    std::vector<std::string_view> fields;
    SplitRecord(line, separator, fields);
    return std::count_if(fields.begin(), fields.end(), [decimal](std::string_view field) {
               return NumberOf(field, decimal).has_value();
           }) >= kCoordinates;
}

// True where a line behind the first one has three numbers.
bool HoldsRecord(std::string_view lines, FieldSeparator separator, char decimal) {
    for (std::size_t end = 0; (end = lines.find_first_of("\r\n")) != std::string_view::npos;) {
        lines.remove_prefix(end + 1);
        if (HasThreeNumbers(lines.substr(0, lines.find_first_of("\r\n")), separator, decimal)) {
            return true;
        }
    }
    return false;
}

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
    return WithoutHardBlanks(Trimmed(line)).empty();
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

std::string_view WithoutComment(std::string_view line, FieldSeparator separator, char decimal) {
    constexpr int kMostMarks = 16; // a line of marks is no record with a comment
    int marks = 0;
    for (std::size_t at = line.find_first_of("#;!*%/", 1);
         at != std::string_view::npos && marks < kMostMarks;
         at = line.find_first_of("#;!*%/", at + 1)) {
        const std::size_t mark = MarkLength(line.substr(at), separator);
        if (mark == 0 || !IsBlank(line[at - 1]) || BeginsNumber(Trimmed(line.substr(at + mark)))) {
            continue;
        }
        ++marks;
        const std::string_view data = Trimmed(line.substr(0, at));
        if (HasThreeNumbers(data, separator, decimal) &&
            QuotesOf(data, separator, decimal) != Quotes::Open) {
            return data;
        }
    }
    return line;
}

void SplitWithoutComment(std::string_view line, FieldSeparator separator, char decimal,
                         std::vector<std::string_view>& fields) {
    SplitRecord(WithoutComment(line, separator, decimal), separator, fields);
}

Quotes QuotesOf(std::string_view lines, FieldSeparator separator, char decimal) {
    const char mark = CharacterOf(separator);
    const bool byBlanks = separator == FieldSeparator::Blank;
    const std::string_view ends = byBlanks ? " \t\f\v\r\n" : std::string_view("\r\n");
    bool isDoubtful = false;
    for (std::size_t at = 0;;) {
        at = SkipPadding(lines, at, byBlanks ? '\0' : mark);
        if (at < lines.size() && lines[at] == '"') {
            const std::size_t close = CloseOf(lines, at);
            if (close == std::string_view::npos) {
                return IsBlankLine(lines.substr(at + 1)) ? Quotes::Closed : Quotes::Open;
            }
            const std::size_t after = byBlanks ? close + 1 : SkipPadding(lines, close + 1, mark);
            const bool isWhole = after == lines.size();
            if (isWhole || lines[after] == mark || (byBlanks && IsBlank(lines[after]))) {
                isDoubtful =
                    isDoubtful || HoldsRecord(lines.substr(at, close - at), separator, decimal);
                if (isWhole) {
                    break;
                }
                at = after + 1;
                continue;
            }
        }
        const std::size_t end = std::min(lines.find(mark, at), lines.find_first_of(ends, at));
        if (end == std::string_view::npos) {
            break;
        }
        if (lines[end] == '\r' || lines[end] == '\n') {
            return Quotes::Stray;
        }
        at = end + 1;
    }
    return isDoubtful ? Quotes::Records : Quotes::Closed;
}

std::optional<double> NumberOf(std::string_view field, char decimal) {
    return PlainNumber(WithoutHardBlanks(field), decimal).Value();
}

bool IsVoid(std::string_view field, char decimal, const std::vector<std::string>& others) {
    field = WithoutHardBlanks(field);
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
        if (field[i] == '\r' || field[i] == '\n') {
            text += ' ';
            i += field.substr(i).starts_with("\r\n") ? 1 : 0;
            continue;
        }
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
