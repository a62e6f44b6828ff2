// The numbers of draw styles and draw modes, and the dashes of each style.
//
// Data: one list of lengths a style. Method: surfaces of pixels make bits of the lengths, vector
// files write them down.
#pragma once

#include <array>
#include <span>

namespace terravo {

/// Values of DrawStyle; any other is dotted.
namespace DrawStyles {
inline constexpr int kSolid = 0;
inline constexpr int kDash = 1;
inline constexpr int kDot = 2;
inline constexpr int kDashDot = 3;
inline constexpr int kDashDotDot = 4;
} // namespace DrawStyles

/// Values of DrawMode that differ from a plain copy, and the plain copy.
namespace DrawModes {
inline constexpr int kInvert = 6;
inline constexpr int kXor = 7;
inline constexpr int kNotXor = 10;
inline constexpr int kCopy = 13;
} // namespace DrawModes

namespace DashTable {
inline constexpr std::array kDash{6, 4};
inline constexpr std::array kDot{2, 2};
inline constexpr std::array kDashDot{6, 3, 2, 4};
inline constexpr std::array kDashDotDot{6, 3, 2, 4, 2, 3};
} // namespace DashTable

/// Pixels of dash and gap in turn, from the start of a line; none for an unbroken line.
constexpr std::span<const int> DashLengths(int drawStyle) {
    switch (drawStyle) {
    case DrawStyles::kSolid:
        return {};
    case DrawStyles::kDash:
        return DashTable::kDash;
    case DrawStyles::kDashDot:
        return DashTable::kDashDot;
    case DrawStyles::kDashDotDot:
        return DashTable::kDashDotDot;
    default:
        return DashTable::kDot;
    }
}

} // namespace terravo
