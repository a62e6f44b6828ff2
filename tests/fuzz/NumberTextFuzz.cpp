// Numbers of any size as text.
//
// Data: doubles, eight bytes each, or whole numbers divided by powers of ten, as surveys have them.
// Method: every text must be short, use the period whatever the locale, and read back as the number
// within the digits that it shows.
#include "fuzz/FuzzInput.h"
#include "util/NumberText.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <limits>
#include <system_error>

namespace terravo {
namespace {

using fuzz::Require;

// Sign, 15 digits, point, "E-308".
constexpr std::size_t kLongest = 22;
// Half a unit in the last of 15 digits, and the rounding of reading it.
constexpr double kLastDigit = 5.3e-15;

double ReadWhole(const std::string& text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    Require(read.ec == std::errc{} && read.ptr == end, "a number reads back: " + text);
    return value;
}

void CheckGeneral(double value) {
    const std::string text = NumberText::General(value);
    Require(text.size() <= kLongest, "a number is short: " + text);
    Require(text.find_first_not_of("-.0123456789E+") == std::string::npos, "plain: " + text);
    const double back = ReadWhole(text);
    // Denormal numbers hold fewer than 15 digits; they are a step apart at most.
    Require(std::fabs(back - value) <=
                kLastDigit * std::fabs(value) + std::numeric_limits<double>::denorm_min(),
            "15 digits are kept: " + text);
    Require(NumberText::General(back) == text, "a number printed again is the same: " + text);
    const double leading = NumberText::LeadingNumber(text + " ,7");
    Require(!(leading < back) && !(leading > back), "the leading number is the number: " + text);
}

void CheckScreen(double value, std::string_view pattern, int decimals) {
    const std::string text = NumberText::FormatScreen(value, pattern, '.');
    Require(text.size() <= 330 && text != "-0" && !text.starts_with('.'), "a screen text: " + text);
    const double unit = std::pow(10, -decimals);
    // Rounded twice: to 15 digits and then to the decimals.
    const double most = 0.5 * unit * (1 + 1e-12) + 2 * kLastDigit * std::fabs(value);
    Require(std::fabs(ReadWhole(text) - value) <= most, "a screen text keeps the value: " + text);
}

void CheckSingle(float value) {
    const std::string text = NumberText::SingleText(value);
    float back = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, back);
    Require(read.ptr == end && !(back < value) && !(back > value), "a single reads back: " + text);
}

double NextNumber(fuzz::InputBytes& bytes, int kind) {
    if (kind == 0) {
        const double value = bytes.Double();
        return std::isfinite(value) ? value : 0;
    }
    const int decimals = bytes.Byte() % 20;
    const int dropped = bytes.Byte() % 64;
    const auto whole = static_cast<std::int64_t>(bytes.Word()) >> dropped;
    return static_cast<double>(whole) / std::pow(10, decimals);
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    // Whichever there is; they write a comma.
    static const bool hasComma = std::setlocale(LC_ALL, "it_IT.UTF-8") != nullptr ||
                                 std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    static_cast<void>(hasComma);
    fuzz::InputBytes bytes(data, size);
    const int kind = bytes.Byte() % 2;
    while (!bytes.IsEmpty()) {
        const double value = NextNumber(bytes, kind);
        CheckGeneral(value);
        CheckScreen(value, "#0.0##", 3);
        CheckScreen(value, "#0.000", 3);
        CheckScreen(value, "#0", 0);
        if (std::fabs(value) <= static_cast<double>(std::numeric_limits<float>::max())) {
            CheckSingle(static_cast<float>(value));
        }
    }
    return 0;
}
