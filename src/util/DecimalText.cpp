#include "util/DecimalText.h"

#include "util/WideProduct.h"

#include <bit>
#include <limits>

namespace terravo::DecimalText {
namespace {

static_assert(std::numeric_limits<double>::is_iec559 && DBL_MANT_DIG == 53);

// 10^-q lies in [factor, factor + 1) * 2^-(63 + length), the factor having its highest bit set;
// length is the number of bits of 10^q.
struct Reciprocal {
    std::uint64_t factor = 0;
    int length = 0;
};

// Long division of 2^(63 + length) by 10^q, bit by bit; the first remainder is 2^(length - 1).
constexpr Reciprocal ReciprocalOf(std::uint64_t powerOfTen) {
    Reciprocal reciprocal{0, static_cast<int>(std::bit_width(powerOfTen))};
    std::uint64_t remainder = std::uint64_t{1} << (reciprocal.length - 1);
    for (int bit = 0; bit < 64; ++bit) {
        // Twice the remainder may not fit: it is compared and reduced without being formed.
        const std::uint64_t missing = powerOfTen - remainder;
        const bool reaches = remainder >= missing;
        remainder = reaches ? remainder - missing : remainder + remainder;
        reciprocal.factor = reciprocal.factor * 2 + (reaches ? 1 : 0);
    }
    return reciprocal;
}

constexpr auto kReciprocals = [] {
    std::array<Reciprocal, kMostDigits + 1> all; // the first, of 10^0, stays unused
    std::uint64_t powerOfTen = 1;
    for (std::size_t q = 1; q < all.size(); ++q) {
        powerOfTen *= 10;
        all[q] = ReciprocalOf(powerOfTen);
    }
    return all;
}();

double PowerOfTwo(int exponent) {
    constexpr int kBias = 1023;
    return std::bit_cast<double>(static_cast<std::uint64_t>(kBias + exponent) << 52);
}

} // namespace

// With w = whole * 2^shift below 2^64, the quotient is
//     whole / 10^q = w * (factor + f) * 2^-(63 + length + shift),  0 <= f < 1.
// In units of 2^64, w * factor is `upper` and a fraction, and w * f is less than 1: the true
// product lies in [upper, upper + 2). Whatever both bounds are rounded to is the nearest double;
// they part only when the bits to be dropped are half a unit or one less.
bool DivideLong(std::uint64_t whole, std::size_t decimals, double& value) {
    if (decimals == 0) {
        value = static_cast<double>(whole);
        return true;
    }
    const Reciprocal reciprocal = kReciprocals[decimals];
    const int shift = std::countl_zero(whole);
    const std::uint64_t upper = MultiplyWide(whole << shift, reciprocal.factor).upper;
    const int dropped = 64 - std::countl_zero(upper) - DBL_MANT_DIG;
    const std::uint64_t half = std::uint64_t{1} << (dropped - 1);
    const std::uint64_t rest = upper & (2 * half - 1);
    if (rest == half || rest == half - 1) {
        return false;
    }
    const std::uint64_t rounded = (upper >> dropped) + (rest > half ? 1 : 0);
    value = static_cast<double>(rounded) * PowerOfTwo(dropped + 1 - shift - reciprocal.length);
    return true;
}

} // namespace terravo::DecimalText
