// Colours: 24-bit values 0x00BBGGRR, red in the low byte.
#pragma once

#include <cstdint>

namespace terravo {

using Colour = std::uint32_t;

/// The colour with these channels, each 0..255.
constexpr Colour RGB(int red, int green, int blue) {
    return static_cast<Colour>(red + 256 * green + 65536 * blue);
}

constexpr int RedOf(Colour colour) {
    return static_cast<int>(colour & 0xFFU);
}
constexpr int GreenOf(Colour colour) {
    return static_cast<int>((colour >> 8U) & 0xFFU);
}
constexpr int BlueOf(Colour colour) {
    return static_cast<int>((colour >> 16U) & 0xFFU);
}

inline constexpr Colour kBlack = RGB(0, 0, 0);
inline constexpr Colour kWhite = RGB(255, 255, 255);
inline constexpr Colour kGrey = RGB(128, 128, 128);
inline constexpr Colour kRed = RGB(255, 0, 0);
inline constexpr Colour kGreen = RGB(0, 255, 0);

} // namespace terravo
