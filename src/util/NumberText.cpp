#include "util/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace terravo::NumberText {
namespace {

constexpr int kSignificantDigits = 15;
constexpr std::size_t kZoneWidth = 14;

// Decimal value 0.d1 d2 ... dn times 10^pointPosition, without leading or trailing zeros; zero has
// no digits.
struct Decimal {
    bool negative = false;
    int pointPosition = 0;
    int digitCount = 0;
    std::array<char, 24> digits{};
};

// Fills digits and pointPosition from the text of a positive number in scientific form.
void ReadScientific(const char* begin, const char* end, Decimal& decimal) {
    decimal.digitCount = 0;
    const char* p = begin;
    for (; p != end && *p != 'e'; ++p) {
        if (*p != '.') {
            decimal.digits[static_cast<std::size_t>(decimal.digitCount++)] = *p;
        }
    }
    int exponent = 0;
    if (p != end) {
        ++p;
        if (*p == '+') {
            ++p;
        }
        std::from_chars(p, end, exponent);
    }
    decimal.pointPosition = exponent + 1;
}

void StripTrailingZeros(Decimal& decimal) {
    while (decimal.digitCount > 0 &&
           decimal.digits[static_cast<std::size_t>(decimal.digitCount) - 1] == '0') {
        --decimal.digitCount;
    }
    if (decimal.digitCount == 0) {
        decimal.pointPosition = 0;
    }
}

Decimal ToDecimal(double value) {
    Decimal decimal;
    decimal.negative = value < 0;
    const double magnitude = std::fabs(value);
    if (!(magnitude > 0)) {
        decimal.negative = false;
        return decimal;
    }
    std::array<char, 40> text{};
    auto* const first = text.data();
    auto* const last = text.data() + text.size();
    auto written = std::to_chars(first, last, magnitude, std::chars_format::scientific);
    ReadScientific(first, written.ptr, decimal);
    if (decimal.digitCount > kSignificantDigits) {
        written = std::to_chars(first, last, magnitude, std::chars_format::scientific,
                                kSignificantDigits - 1);
        ReadScientific(first, written.ptr, decimal);
    }
    StripTrailingZeros(decimal);
    return decimal;
}

void AppendExponent(std::string& out, int exponent) {
    out += exponent < 0 ? "E-" : "E+";
    const int magnitude = std::abs(exponent);
    if (magnitude < 10) {
        out += '0';
    }
    out += std::to_string(magnitude);
}

void AppendMagnitude(std::string& out, const Decimal& decimal) {
    if (decimal.digitCount == 0) {
        out += '0';
        return;
    }
    const auto count = static_cast<std::size_t>(decimal.digitCount);
    const std::string_view digits(decimal.digits.data(), count);
    const int exponent = decimal.pointPosition - 1;
    if (exponent < -4 || exponent >= kSignificantDigits) {
        out += digits[0];
        if (count > 1) {
            out += '.';
            out += digits.substr(1);
        }
        AppendExponent(out, exponent);
    } else if (decimal.pointPosition <= 0) {
        out += '.';
        out.append(static_cast<std::size_t>(-decimal.pointPosition), '0');
        out += digits;
    } else {
        const auto whole = static_cast<std::size_t>(decimal.pointPosition);
        out += digits.substr(0, std::min(whole, count));
        if (whole >= count) {
            out.append(whole - count, '0');
        } else {
            out += '.';
            out += digits.substr(whole);
        }
    }
}

template <class Number>
void AppendZones(std::string& out, Number a, Number b, Number c) {
    const std::size_t lineStart = out.size();
    AppendPrinted(out, a);
    for (const Number number : {b, c}) {
        const std::size_t zones = (out.size() - lineStart + kZoneWidth - 1) / kZoneWidth;
        out.append(lineStart + zones * kZoneWidth - out.size(), ' ');
        AppendPrinted(out, number);
    }
    out += "\r\n";
}

// Rounds the decimal value half away from zero to the given number of decimals.
void RoundDecimals(Decimal& decimal, int decimals) {
    const int kept = decimal.pointPosition + decimals;
    if (kept >= decimal.digitCount) {
        return;
    }
    const bool roundUp = kept >= 0 && decimal.digits[static_cast<std::size_t>(kept)] >= '5';
    decimal.digitCount = std::max(kept, 0);
    if (!roundUp) {
        StripTrailingZeros(decimal);
        return;
    }
    int position = kept - 1;
    while (position >= 0 && decimal.digits[static_cast<std::size_t>(position)] == '9') {
        --position;
    }
    if (position < 0) {
        decimal.digits[0] = '1';
        decimal.digitCount = 1;
        ++decimal.pointPosition;
        return;
    }
    ++decimal.digits[static_cast<std::size_t>(position)];
    decimal.digitCount = position + 1;
}

// Digit number `place` counted from the decimal point: 0 is the first decimal, -1 the units.
char DigitAt(const Decimal& decimal, int place) {
    const int position = decimal.pointPosition + place;
    return position >= 0 && position < decimal.digitCount
               ? decimal.digits[static_cast<std::size_t>(position)]
               : '0';
}

} // namespace

void AppendGeneral(std::string& out, double value) {
    if (!std::isfinite(value)) {
        out += std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf";
        return;
    }
    const Decimal decimal = ToDecimal(value);
    if (decimal.negative) {
        out += '-';
    }
    AppendMagnitude(out, decimal);
}

std::string General(double value) {
    std::string out;
    AppendGeneral(out, value);
    return out;
}

void AppendPrinted(std::string& out, double value) {
    const std::size_t start = out.size();
    out += ' ';
    AppendGeneral(out, value);
    if (out[start + 1] == '-') {
        out.erase(start, 1);
    }
    out += ' ';
}

void AppendPrinted(std::string& out, std::int64_t value) {
    std::array<char, 24> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value);
    if (value >= 0) {
        out += ' ';
    }
    out.append(text.data(), written.ptr);
    out += ' ';
}

void AppendPrintedLine(std::string& out, double x, double y, double z) {
    AppendZones(out, x, y, z);
}

void AppendPrintedLine(std::string& out, std::int64_t a, std::int64_t b, std::int64_t c) {
    AppendZones(out, a, b, c);
}

std::string FormatScreen(double value, std::string_view pattern, char separator) {
    if (!std::isfinite(value)) {
        return General(value);
    }
    const std::size_t point = std::min(pattern.find('.'), pattern.size());
    const std::string_view decimalPart = pattern.substr(std::min(point + 1, pattern.size()));
    const int most = static_cast<int>(decimalPart.size());
    const int least = static_cast<int>(decimalPart.find_last_of('0') + 1);

    Decimal decimal = ToDecimal(value);
    RoundDecimals(decimal, most);
    std::string out;
    if (decimal.negative && decimal.digitCount > 0) {
        out += '-';
    }
    for (int place = std::min(-decimal.pointPosition, -1); place < 0; ++place) {
        out += DigitAt(decimal, place);
    }
    const int shown = std::max(least, std::min(most, decimal.digitCount - decimal.pointPosition));
    if (shown > 0) {
        out += separator;
    }
    for (int place = 0; place < shown; ++place) {
        out += DigitAt(decimal, place);
    }
    return out;
}

double LeadingNumber(std::string_view text) {
    const std::size_t start = std::min(text.find_first_not_of(" \t"), text.size());
    text.remove_prefix(start);
    bool negative = false;
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
        negative = text[0] == '-';
        text.remove_prefix(1);
    }
    const bool plain = !text.empty() && ((text[0] >= '0' && text[0] <= '9') || text[0] == '.');
    double value = 0;
    if (plain) {
        std::from_chars(text.data(), text.data() + text.size(), value);
    }
    return negative ? -value : value;
}

} // namespace terravo::NumberText
