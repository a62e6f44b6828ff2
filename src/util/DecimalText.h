// Plain decimal numbers, read faster than std::from_chars and to the same bit.
//
// Data: the digits of a number without a sign or an exponent, up to 19 of them, which fit into 64
// bits. Method: the digits are one whole number w, the decimals a count q, the value w / 10^q. When
// w is at most 2^53 both are doubles without an error, so that their quotient is rounded once and
// therefore right. A larger w is divided in whole numbers, with bounds for the quotient.
#pragma once

#include <array>
#include <cfloat>
#include <cstddef>
#include <cstdint>

namespace terravo::DecimalText {

static_assert(FLT_EVAL_METHOD == 0, "a quotient kept in a wider format would be rounded twice");

/// Most digits that Read takes, leading and trailing zeros included.
inline constexpr std::ptrdiff_t kMostDigits = 19;

/// Powers of ten, all of them exact.
inline constexpr std::array<double, kMostDigits + 1> kPowersOfTen{
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
    1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

/// Finds the double nearest to whole / 10^decimals.
/// @param whole     greater than 0.
/// @param decimals  0 to kMostDigits.
/// @return false, with the value left alone, when the quotient lies on or next to the middle
///         between two doubles (about one in a thousand at random).
[[nodiscard]] bool DivideLong(std::uint64_t whole, std::size_t decimals, double& value);

/// Reads digits with at most one point before, among or behind them.
/// @tparam kPoint  the decimal sign.
/// @param text  ended by any byte that is neither a digit nor a point.
/// @return the byte after the number; nullptr, with the value left alone, when there is no digit,
///         too many of them, or DivideLong gives up. What follows is for the caller to judge: an
///         exponent is not read.
template <char kPoint = '.'>
inline const char* Read(const char* text, double& value) {
    std::uint64_t whole = 0;
    const auto takeDigits = [&whole](const char* p) {
        for (unsigned digit = 0;
             (digit = static_cast<unsigned>(static_cast<unsigned char>(*p)) - '0') <= 9; ++p) {
            whole = whole * 10 + digit;
        }
        return p;
    };
    const char* end = takeDigits(text);
    std::ptrdiff_t digits = end - text;
    std::ptrdiff_t decimals = 0;
    if (*end == kPoint) {
        const char* const first = end + 1;
        end = takeDigits(first);
        decimals = end - first;
        digits += decimals;
    }
    if (digits == 0 || digits > kMostDigits) {
        return nullptr;
    }
    const auto power = static_cast<std::size_t>(decimals);
    constexpr std::uint64_t kLargestExact = std::uint64_t{1} << DBL_MANT_DIG;
    if (whole <= kLargestExact) {
        value = static_cast<double>(whole) / kPowersOfTen[power];
        return end;
    }
    return DivideLong(whole, power, value) ? end : nullptr;
}

} // namespace terravo::DecimalText
