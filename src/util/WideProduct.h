// The product of two 64-bit numbers.
//
// Data: the 128 bits as two words. Method: four products of halves, since standard C++ has no wider
// integer.
#pragma once

#include <cstdint>

namespace terravo {

/// upper * 2^64 + lower.
struct WideProduct {
    std::uint64_t upper = 0;
    std::uint64_t lower = 0;
};

/// All 128 bits of a * b.
constexpr WideProduct MultiplyWide(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t kHalf = 0xFFFFFFFF;
    const std::uint64_t lowest = (a & kHalf) * (b & kHalf);
    const std::uint64_t first = (a >> 32) * (b & kHalf) + (lowest >> 32);
    const std::uint64_t second = (a & kHalf) * (b >> 32) + (first & kHalf);
    return {(a >> 32) * (b >> 32) + (first >> 32) + (second >> 32),
            (second << 32) | (lowest & kHalf)};
}

} // namespace terravo
