// The common part of two triangles, by signs alone.
//
// Data: on which side of each side of one triangle the corners of the other lie. Method: the first
// triangle is cut by the sides of the second one after the other. A corner is never a rounded
// place but a name: a corner of either, or the crossing of a side of each; on which side of a third
// line a crossing lies follows from the signs of the corners.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace terravo {

/// Corners and sides count from 0; side k runs from corner k to the next one.
struct OverlapCorner {
    enum class Kind : std::uint8_t { First, Second, Crossing };

    Kind kind = Kind::First;
    std::uint8_t first = 0;  // corner of the first triangle, or its side
    std::uint8_t second = 0; // corner of the second, or its side; of Kind::First without a meaning

    bool operator==(const OverlapCorner&) const = default;
};

/// Entry [corner][side] is +1 where the corner lies to the left of the other triangle's side, -1 to
/// the right, 0 on its line.
using SideSigns = std::array<std::array<int, 3>, 3>;

inline constexpr std::size_t kMostOverlapCorners = 6;

struct TriangleOverlap {
    std::array<OverlapCorner, kMostOverlapCorners> corners;
    std::size_t count = 0; // 0: they have no ground in common; else 3 or more, counter-clockwise
};

/// @param first   of the first triangle's corners beside the second's sides.
/// @param second  of the second's corners beside the first's sides. Both triangles run
///                counter-clockwise.
TriangleOverlap OverlapOf(const SideSigns& first, const SideSigns& second);

} // namespace terravo
