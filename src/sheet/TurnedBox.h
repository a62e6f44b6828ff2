// A rectangle on the paper at any angle: the room of a text along a line.
//
// Data: its middle, a unit vector along its length and half its sides, millimetres. Method: two of
// them are apart when the direction of one of their sides tells them apart.
#pragma once

#include "sheet/SheetScene.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace terravo {

struct TurnedBox {
    SheetPoint middle;
    SheetPoint along{1, 0}; // unit vector
    double halfLength = 0;
    double halfHeight = 0;

    /// A place as seen from the box: x along its length, y at right angles to it.
    [[nodiscard]] SheetPoint Local(SheetPoint p) const {
        const double dx = p.x - middle.x;
        const double dy = p.y - middle.y;
        return {dx * along.x + dy * along.y, dy * along.x - dx * along.y};
    }
    [[nodiscard]] SheetPoint FromLocal(SheetPoint p) const {
        return {middle.x + p.x * along.x - p.y * along.y, middle.y + p.x * along.y + p.y * along.x};
    }
    [[nodiscard]] bool Contains(SheetPoint p) const {
        const SheetPoint local = Local(p);
        return std::abs(local.x) <= halfLength && std::abs(local.y) <= halfHeight;
    }
    [[nodiscard]] TurnedBox Grown(double byLength, double byHeight) const {
        return {middle, along, halfLength + byLength, halfHeight + byHeight};
    }
    /// The upright box around it.
    [[nodiscard]] SheetBox Bounds() const {
        const double dx = halfLength * std::abs(along.x) + halfHeight * std::abs(along.y);
        const double dy = halfLength * std::abs(along.y) + halfHeight * std::abs(along.x);
        return {middle.x - dx, middle.y - dy, middle.x + dx, middle.y + dy};
    }
};

inline TurnedBox Upright(const SheetBox& box) {
    return {box.Middle(), {1, 0}, box.Width() / 2, box.Height() / 2};
}

inline bool Contains(const SheetBox& outer, const SheetBox& inner) {
    return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
           inner.bottom <= outer.bottom;
}

/// Whether the two share a place; touching counts.
inline bool Overlap(const TurnedBox& a, const TurnedBox& b) {
    const double c = std::abs(a.along.x * b.along.x + a.along.y * b.along.y);
    const double s = std::abs(a.along.x * b.along.y - a.along.y * b.along.x);
    const auto isApart = [&](const TurnedBox& box, const TurnedBox& other) {
        const SheetPoint d = box.Local(other.middle);
        return std::abs(d.x) > box.halfLength + other.halfLength * c + other.halfHeight * s ||
               std::abs(d.y) > box.halfHeight + other.halfLength * s + other.halfHeight * c;
    };
    return !isApart(a, b) && !isApart(b, a);
}

} // namespace terravo
