#include "util/DecimalText.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <optional>
#include <random>
#include <string>

namespace terravo {
namespace {

constexpr auto kDecimal = std::chars_format::fixed;

// What was read of a text, compared on the way with the standard library: same bits, same end.
std::optional<double> ReadSame(const std::string& text) {
    double value = -1;
    const char* const end = DecimalText::Read(text.c_str(), value);
    if (end == nullptr) {
        EXPECT_EQ(value, -1) << text;
        return std::nullopt;
    }
    double expected = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), expected, kDecimal);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected)) << text;
    EXPECT_EQ(end, read.ptr) << text;
    return value;
}

std::string RandomDigits(std::size_t count, std::mt19937_64& engine) {
    std::string text;
    while (text.size() < count) {
        text += static_cast<char>('0' + engine() % 10);
    }
    return text;
}

TEST(DecimalText, TakesUpTo19DigitsAndLeavesWhatIsNoPlainNumber) {
    for (const char* text : {"0", "7", "5.", ".5", "000.250", "1.5,2", "1.2.3", "12e5", "1 2", "9x",
                             "9007199254740992", "0.000000000000000001", "9999999999999999999"}) {
        EXPECT_TRUE(ReadSame(text)) << text;
    }
    for (const char* text : {"", ".", "-1", "+1", " 1", "e5", "nan", ".e1", "12345678901234567890",
                             "0.0000000000000000001", "18446744073709551617.5"}) {
        EXPECT_FALSE(ReadSame(text)) << text;
    }
}

TEST(DecimalText, RoundsRandomNumbersLikeTheStandardLibrary) {
    std::mt19937_64 engine(7);
    int refused = 0;
    for (int i = 0; i < 100000; ++i) {
        const std::size_t digits = 1 + engine() % 19;
        std::string text = RandomDigits(digits, engine);
        text.insert(engine() % (digits + 1), 1, '.');
        const bool isRead = ReadSame(text).has_value();
        EXPECT_TRUE(isRead || digits > 15) << text;
        refused += isRead ? 0 : 1;
    }
    EXPECT_LT(refused, 200) << "only a quotient beside the middle of two doubles may be refused";
}

// The hardest texts: the exact middle of two doubles, which is rounded to the even one, and the
// numbers one unit of the last digit to its sides.
TEST(DecimalText, NeverRoundsTheMiddleOfTwoDoublesToTheWrongSide) {
    std::mt19937_64 engine(9);
    for (int i = 0; i < 20000; ++i) {
        const int decimals = 1 + i % 3;
        const std::uint64_t odd = (engine() >> 10) | (std::uint64_t{1} << 53) | 1;
        const std::uint64_t tens[] = {1, 10, 100, 1000};
        const std::uint64_t fives[] = {1, 5, 25, 125};
        // odd / 2^decimals, as odd * 5^decimals / 10^decimals
        const std::uint64_t whole = odd >> decimals;
        const std::uint64_t part = (odd & ((1U << decimals) - 1)) * fives[decimals];
        for (const std::uint64_t last : {part - 1, part, part + 1}) {
            const std::string tail = std::to_string(tens[decimals] + last).substr(1);
            ReadSame(std::to_string(whole) + "." + tail);
        }
    }
}

} // namespace
} // namespace terravo
