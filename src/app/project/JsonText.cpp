#include "app/project/JsonText.h"

#include <QString>

#include <charconv>
#include <cmath>
#include <utility>

namespace terravo {
namespace {

constexpr std::size_t kIndent = 2;
constexpr std::size_t kLineLength = 100;

// Readers take a bare -0 for the whole number 0.
void AppendNumber(std::string& out, double value) {
    if (value == 0 && std::signbit(value)) {
        out += "\"-0\"";
        return;
    }
    char digits[32];
    const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), value);
    out.append(digits, end);
}

// Names out of other programs' files may be no text at all, which no reader takes.
void AppendQuoted(std::string& out, std::string_view bytes) {
    constexpr const char* kHex = "0123456789abcdef";
    const std::string text =
        QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())).toStdString();
    out += '"';
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (code < ' ' || code == 0x7F) {
            out += "\\u00";
            out += kHex[code / 16];
            out += kHex[code % 16];
        } else {
            out += c;
        }
    }
    out += '"';
}

} // namespace

void JsonText::BeginEntry() {
    if (std::exchange(hasKey_, false)) {
        return;
    }
    if (!open_.empty()) {
        text_ += isFirst_ ? "\n" : ",\n";
        lineBegin_ = text_.size();
        text_.append(open_.size() * kIndent, ' ');
    }
    isFirst_ = false;
}

void JsonText::Begin(char bracket) {
    BeginEntry();
    text_ += bracket;
    open_ += bracket == '{' ? '}' : ']';
    isFirst_ = true;
}

void JsonText::End() {
    const char bracket = open_.back();
    open_.pop_back();
    if (!isFirst_) {
        text_ += '\n';
        lineBegin_ = text_.size();
        text_.append(open_.size() * kIndent, ' ');
    }
    text_ += bracket;
    isFirst_ = false;
}

JsonText& JsonText::Key(std::string_view name) {
    BeginEntry();
    AppendQuoted(text_, name);
    text_ += ": ";
    hasKey_ = true;
    return *this;
}

void JsonText::Put(std::string_view value) {
    BeginEntry();
    text_ += value;
}

void JsonText::Add(std::string_view text) {
    BeginEntry();
    AppendQuoted(text_, text);
}

void JsonText::Add(double value) {
    BeginEntry();
    AppendNumber(text_, value);
}

void JsonText::AddRow(std::initializer_list<double> numbers) {
    BeginEntry();
    const char* before = "[";
    for (const double number : numbers) {
        text_ += before;
        AppendNumber(text_, number);
        before = ", ";
    }
    text_ += ']';
}

void JsonText::AddInLine(std::int64_t value) {
    const std::string number = std::to_string(value);
    if (isFirst_ || text_.size() - lineBegin_ + number.size() + 2 > kLineLength) {
        Put(number);
    } else {
        text_ += ", " + number;
    }
}

std::string JsonText::Take() {
    text_ += '\n';
    return std::exchange(text_, {});
}

} // namespace terravo
