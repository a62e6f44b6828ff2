// Lines and rings cut off at a rectangle.
//
// Data: vertices on the paper, of a curve with their places on it. Method: a line is followed side
// by side, each cut by parameters along it, and its places with it; a ring is cut at one edge of
// the rectangle after the other, which leaves pieces of the rectangle's edges in it, as an area
// needs them.
#pragma once

#include "sheet/SheetScene.h"

#include <span>
#include <vector>

namespace terravo {

/// Parts of a line inside a rectangle, one behind the other.
struct ClippedLine {
    std::vector<SheetPoint> points;
    /// Of each point on its curve, rising along a part; a part over the beginning of a closed curve
    /// goes on beyond its end. None of lines that are no curves.
    std::vector<double> places;
    struct Part {
        std::size_t first = 0;
        std::size_t count = 0;
        bool closed = false; // only a closed line that is inside as a whole
    };
    std::vector<Part> parts;

    void Clear() {
        points.clear();
        places.clear();
        parts.clear();
    }
    [[nodiscard]] std::span<const SheetPoint> PointsOf(const Part& part) const {
        return std::span(points).subspan(part.first, part.count);
    }
    [[nodiscard]] std::span<const double> PlacesOf(const Part& part) const {
        return places.empty() ? std::span<const double>()
                              : std::span(places).subspan(part.first, part.count);
    }
};

/// Where the vertices of a line lie on the curve that it was, as in SheetCurve.h.
struct PlacesOnCurve {
    std::span<const double> places; // none: it was no curve
    double end = 0;                 // of a closed curve
};

/// Adds the parts of a line that lie inside a box to those that are there. A closed line that is
/// cut has no part that ends where it began and goes on there.
/// @param inside  has parts of curves alone or none of them.
void ClipLine(std::span<const SheetPoint> line, bool closed, const SheetBox& box,
              ClippedLine& inside, const PlacesOnCurve& curve = {});

/// A ring cut off at a box; empty where nothing is left.
std::vector<SheetPoint> ClipRing(std::span<const SheetPoint> ring, const SheetBox& box);

} // namespace terravo
