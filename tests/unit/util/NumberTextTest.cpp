#include "util/NumberText.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

namespace terravo {
namespace {

using namespace NumberText;

std::string Printed(double value) {
    std::string out;
    AppendPrinted(out, value);
    return out;
}

TEST(PrintedNumbers, HaveASignPositionAndNoZeroBeforeThePoint) {
    const struct {
        double value;
        const char* text;
    } cases[] = {
        {12.5, " 12.5 "},
        {-0.75, "-.75 "},
        {0, " 0 "},
        {-0.0, " 0 "},
        {0.1 + 0.2, " .3 "}, // 15 digits, not 17
        {1.0 / 3, " .333333333333333 "},
        {0.0001, " .0001 "},
        {0.00001, " 1E-05 "},
        {1.5e-7, " 1.5E-07 "},
        {-1.25e-300, "-1.25E-300 "},
        {123456789012345, " 123456789012345 "},
        {999999999999999.9, " 1E+15 "}, // rounds up to the next power
        {std::numeric_limits<double>::denorm_min(), " 5E-324 "},
        {std::numeric_limits<double>::max(), " 1.79769313486231E+308 "},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Printed(c.value), c.text);
    }
    std::string integers;
    AppendPrinted(integers, std::int64_t{345});
    AppendPrinted(integers, std::int64_t{-7});
    EXPECT_EQ(integers, " 345 -7 ");
}

TEST(PrintedNumbers, AgreeWithTheCLibraryOnFifteenDigits) {
    const auto expectAgreement = [](double value) {
        std::array<char, 40> text{};
        std::snprintf(text.data(), text.size(), "%.15g", value);
        const std::string general = General(value);
        EXPECT_EQ(std::strtod(general.c_str(), nullptr), std::strtod(text.data(), nullptr))
            << general << " " << text.data();
        EXPECT_EQ(LeadingNumber(general), std::strtod(text.data(), nullptr));
    };
    std::mt19937_64 engine(7);
    for (int i = 0; i < 100000; ++i) {
        const auto mantissa = static_cast<double>(engine() >> (11 + i % 40));
        expectAgreement(std::ldexp(mantissa, static_cast<int>(engine() % 140) - 110));
    }
    // Next to the powers of ten, where the number of digits before the point changes.
    for (int exponent = -6; exponent <= 17; ++exponent) {
        double value = std::pow(10.0, exponent);
        for (int step = -40; step <= 40; ++step) {
            expectAgreement(value * (1 + step * 1.1102230246251565e-16));
            expectAgreement(value * (1 + step * 1e-15));
        }
    }
}

TEST(PrintedLines, FillZonesOfFourteenCharacters) {
    std::string line;
    AppendPrintedLine(line, 12.5, 3.25, 100);
    EXPECT_EQ(line, " 12.5          3.25          100 \r\n");
    EXPECT_EQ(line.size(), 35U);

    // A number of exactly one zone leaves no gap, a longer one skips to the zone after it.
    line.clear();
    AppendPrintedLine(line, 123456.78901, -123456.789012, 7);
    EXPECT_EQ(line, " 123456.78901 -123456.789012 " + std::string(13, ' ') + " 7 \r\n");

    line.clear();
    AppendPrintedLine(line, std::int64_t{1}, std::int64_t{22}, std::int64_t{333});
    EXPECT_EQ(line, " 1             22            333 \r\n");
}

TEST(FormatScreen, RoundsHalfAwayFromZeroOnTheDecimalValue) {
    const struct {
        double value;
        const char* pattern;
        const char* text;
    } cases[] = {
        {12, "#0.0##", "12.0"},
        {3.14159, "#0.0##", "3.142"},
        {-0.5, "#0.0##", "-0.5"},
        {0.0005, "#0.0##", "0.001"},
        {-0.0004, "#0.0##", "0.0"},
        {1.0004, "#0.0##", "1.0"},
        {9.9996, "#0.0##", "10.0"},
        {2.675, "#0.00", "2.68"},
        {-1.0005, "#0.000", "-1.001"},
        {4520000.1, "#0.0##", "4520000.1"},
        {1e20, "#0.0##", "100000000000000000000.0"},
        {99.5, "#0", "100"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FormatScreen(c.value, c.pattern, '.'), c.text) << c.value;
    }
    EXPECT_EQ(FormatScreen(-12.25, "#0.0##", ','), "-12,25");
}

TEST(LeadingNumber, StopsAtTheFirstCharacterThatCannotContinueIt) {
    EXPECT_EQ(LeadingNumber("12,5"), 12);
    EXPECT_EQ(LeadingNumber("  -3.5e2x"), -350);
    EXPECT_EQ(LeadingNumber("+.5"), 0.5);
    EXPECT_EQ(LeadingNumber("levels"), 0);
    EXPECT_EQ(LeadingNumber(""), 0);
    EXPECT_EQ(LeadingNumber("inf"), 0);
}

TEST(NumberTextTest, RoundsUpToSignificantDigits) {
    const std::pair<double, const char*> cases[] = {
        {0.1201, "0,13"}, {0.12, "0,12"}, {0.3, "0,3"},          {5, "5"},
        {1234, "1300"},   {0.999, "1"},   {9.99e-7, "0,000001"}, {0.1 * 3, "0,3"}};
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(NumberText::RoundedUp(value, 2, ','), text);
    }
}

} // namespace
} // namespace terravo
