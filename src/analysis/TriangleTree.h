// Which triangles may meet a triangle or a line.
//
// Data: boxes of eight triangles, of eight such boxes, and so on. Method: triangles are taken in
// the order of a curve that fills the plane, so that neighbours share a box. A box that lies beyond
// a side of what is asked for is passed over, so a long needle asks only along itself.
#pragma once

#include "analysis/MeasuredSurface.h"

#include <array>
#include <cstddef>
#include <vector>

namespace terravo {

class TriangleTree {
public:
    /// @param surface  not looked at later.
    explicit TriangleTree(const MeasuredSurface& surface);

    /// The triangles whose boxes meet a convex outline, none that meets it is missing.
    /// @param outline     counter-clockwise, 2 or 3 places relative to the surface's origin.
    /// @param[out] found  triangle numbers, in the tree's order.
    void Find(std::span<const PlanPoint> outline, std::vector<Index>& found) const;

private:
    struct Box {
        double left;
        double bottom;
        double right;
        double top;
    };
    class Asked;

    static constexpr std::size_t kFan = 8;

    std::vector<Index> order_;           // triangles along the curve
    std::vector<std::vector<Box>> rows_; // of single triangles, of eight, ...; the last has few
};

} // namespace terravo
