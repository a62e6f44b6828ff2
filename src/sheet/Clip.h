// Lines and rings cut off at a rectangle.
//
// Data: vertices on the paper. Method: a line is followed side by side, each cut by parameters
// along it; a ring is cut at one edge of the rectangle after the other, which leaves pieces of the
// rectangle's edges in it, as an area needs them.
#pragma once

#include "sheet/SheetScene.h"

#include <span>
#include <vector>

namespace terravo {

/// Parts of a line inside a rectangle, one behind the other.
struct ClippedLine {
    std::vector<SheetPoint> points;
    struct Part {
        std::size_t first = 0;
        std::size_t count = 0;
        bool closed = false; // only a closed line that is inside as a whole
    };
    std::vector<Part> parts;

    void Clear() {
        points.clear();
        parts.clear();
    }
    [[nodiscard]] std::span<const SheetPoint> PointsOf(const Part& part) const {
        return std::span(points).subspan(part.first, part.count);
    }
};

/// Adds the parts of a line that lie inside a box to those that are there. A closed line that is
/// cut has no part that ends where it began and goes on there.
void ClipLine(std::span<const SheetPoint> line, bool closed, const SheetBox& box,
              ClippedLine& inside);

/// A ring cut off at a box; empty where nothing is left.
std::vector<SheetPoint> ClipRing(std::span<const SheetPoint> ring, const SheetBox& box);

} // namespace terravo
