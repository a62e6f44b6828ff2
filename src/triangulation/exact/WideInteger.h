// Whole numbers of 128 and 256 bits, as far as signs of determinants need them.
//
// Data: the compiler's 128-bit numbers; two of them make one of 256 bits, two's complement. Method:
// products by halves of 64 bits.
#pragma once

#include <cstdint>

namespace terravo::exact {

__extension__ using Int128 = __int128;
__extension__ using Unsigned128 = unsigned __int128;

struct Int256 {
    Unsigned128 low = 0;
    Int128 high = 0; // carries the sign
};

inline int SignOf(Int128 v) {
    return v > 0 ? 1 : v < 0 ? -1 : 0;
}

inline int SignOf(const Int256& v) {
    return v.high < 0 ? -1 : (v.high > 0 || v.low != 0) ? 1 : 0;
}

inline Int256 operator+(const Int256& a, const Int256& b) {
    const Unsigned128 low = a.low + b.low;
    const Unsigned128 carry = low < a.low ? 1 : 0;
    return {low, static_cast<Int128>(static_cast<Unsigned128>(a.high) +
                                     static_cast<Unsigned128>(b.high) + carry)};
}

inline Int256 operator-(const Int256& v) {
    const Unsigned128 low = ~v.low + 1;
    return {low, static_cast<Int128>(~static_cast<Unsigned128>(v.high) + (low == 0 ? 1 : 0))};
}

inline Int256 Product(Int128 a, Int128 b) {
    constexpr unsigned kHalf = 64;
    const auto magnitude = [](Int128 v) {
        return v < 0 ? -static_cast<Unsigned128>(v) : static_cast<Unsigned128>(v);
    };
    const auto lower = [](Unsigned128 v) { return Unsigned128{static_cast<std::uint64_t>(v)}; };
    const Unsigned128 u = magnitude(a);
    const Unsigned128 v = magnitude(b);
    const Unsigned128 lowest = lower(u) * lower(v);
    const Unsigned128 cross = lower(u) * (v >> kHalf);
    const Unsigned128 otherCross = (u >> kHalf) * lower(v);
    const Unsigned128 middle = (lowest >> kHalf) + lower(cross) + lower(otherCross);
    const Unsigned128 high =
        (u >> kHalf) * (v >> kHalf) + (cross >> kHalf) + (otherCross >> kHalf) + (middle >> kHalf);
    const Int256 product{(middle << kHalf) | lower(lowest), static_cast<Int128>(high)};
    return (a < 0) != (b < 0) ? -product : product;
}

} // namespace terravo::exact
