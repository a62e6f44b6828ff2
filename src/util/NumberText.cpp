#include "util/NumberText.h"

#include "util/WideProduct.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace terravo::NumberText {
namespace {

constexpr int kSignificantDigits = 15;
constexpr std::size_t kZoneWidth = 14;
// Above it, rounding to 15 digits makes a number that no double holds and nobody could read back.
constexpr double kLargestPrinted = 1.79769313486231E+308;

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

// The product of two 64-bit numbers, moved right by `shift` bits (1 to 63) and rounded half to
// even. The result must fit 64 bits.
std::uint64_t MultiplyAndShift(std::uint64_t a, std::uint64_t b, int shift) {
    const auto [high, low] = MultiplyWide(a, b);
    const std::uint64_t result = (high << (64 - shift)) | (low >> shift);
    const std::uint64_t rest = low & ((std::uint64_t{1} << shift) - 1);
    const std::uint64_t half = std::uint64_t{1} << (shift - 1);
    const bool roundUp = rest > half || (rest == half && (result & 1) != 0);
    return result + (roundUp ? 1 : 0);
}

// Magnitudes of survey coordinates and heights. With m 2^q the value and 5^p below 2^42, the number
// of 15 digits is round(m 5^p 2^(p+q)): exact integer arithmetic, several times as fast as the
// general way, and the same digits.
constexpr double kSmallestUsual = 1e-4;
constexpr double kLargestUsual = 1e14; // rounding up to the next power of ten still has 15 digits

void ReadUsual(double magnitude, Decimal& decimal) {
    constexpr int kMantissaBits = 53;
    constexpr std::uint64_t kFirst15Digits = 100000000000000;
    static constexpr auto kPowersOf5 = [] {
        std::array<std::uint64_t, 20> powers{1};
        for (std::size_t i = 1; i < powers.size(); ++i) {
            powers[i] = powers[i - 1] * 5;
        }
        return powers;
    }();
    int binaryExponent = 0;
    const double fraction = std::frexp(magnitude, &binaryExponent);
    const auto mantissa = static_cast<std::uint64_t>(std::ldexp(fraction, kMantissaBits));
    // A power of ten at or one below the true one; 1233 / 4096 is log10 of 2 from below.
    int exponent = (binaryExponent - 1) * 1233 >> 12;
    std::uint64_t digits = 0;
    for (;; ++exponent) {
        const int p = kSignificantDigits - 1 - exponent;
        const int shift = kMantissaBits - binaryExponent - p;
        digits = MultiplyAndShift(mantissa, kPowersOf5[static_cast<std::size_t>(p)], shift);
        if (digits < kFirst15Digits * 10) {
            break;
        }
    }
    decimal.pointPosition = exponent + 1;
    decimal.digitCount = kSignificantDigits;
    for (std::size_t i = kSignificantDigits; i-- > 0; digits /= 10) {
        decimal.digits[i] = static_cast<char>('0' + digits % 10);
    }
    StripTrailingZeros(decimal);
}

Decimal ToDecimal(double value) {
    Decimal decimal;
    decimal.negative = value < 0;
    const double magnitude = std::min(std::fabs(value), kLargestPrinted);
    if (!(magnitude > 0)) {
        decimal.negative = false;
        return decimal;
    }
    if (magnitude >= kSmallestUsual && magnitude < kLargestUsual) {
        ReadUsual(magnitude, decimal);
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

std::string SingleText(float value) {
    // Without a format the shorter of both forms is taken, which makes 1e+05 of 100000.
    constexpr float kSmallestFixed = 1e-5F;
    constexpr float kLargestFixed = 1e15F;
    const float magnitude = std::fabs(value);
    const bool fixed =
        !(magnitude > 0) || (magnitude >= kSmallestFixed && magnitude < kLargestFixed);
    std::array<char, 40> text{};
    char* const end = text.data() + text.size();
    const auto written = fixed ? std::to_chars(text.data(), end, value, std::chars_format::fixed)
                               : std::to_chars(text.data(), end, value);
    return {text.data(), written.ptr};
}

std::string RoundedUp(double value, int digits, char separator) {
    if (!(value > 0)) {
        return "0";
    }
    constexpr int kMostDecimals = 30;
    constexpr double kRounding = 1e-12; // of what is such a number but for the last bits
    const int exponent = static_cast<int>(std::floor(std::log10(value)));
    const double unit = std::pow(10.0, exponent - digits + 1);
    const double up = std::ceil(value / unit * (1 - kRounding)) * unit;
    const int decimals = std::clamp(digits - 1 - exponent, 0, kMostDecimals);
    return FormatScreen(
        up, decimals == 0 ? "#0" : "#0." + std::string(static_cast<std::size_t>(decimals), '#'),
        separator);
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
