// A triangle near a plan position, to start a walk from.
//
// Data: a square grid of cells over the bulk of the points, each holding the triangle made last in
// it. Method: the grid starts with one cell and doubles its side whenever the points inserted
// outnumber twice its cells, each new cell inheriting the triangle of the one it lies in; so every
// cell always has a triangle, and a walk crosses a few triangles in whatever order points come. The
// extent comes from inner quantiles of a sample, so that one stray point at the origin of a
// national grid does not gather all the others in one cell.
#pragma once

#include "triangulation/modDelaunay2D.h"

#include <cstddef>
#include <vector>

namespace terravo {

inline double SquaredDistance(PlanPoint a, PlanPoint b) {
    return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

class NearbyStart {
public:
    /// @param coord  positions of all points to come; kept by reference, unchanged meanwhile.
    NearbyStart(const Array1<PlanPoint>& coord, const TriangleList& triangles);

    /// A triangle to start from for the point: that of its cell, or the one made last when the
    /// previous point lies nearer.
    [[nodiscard]] Index StartFor(PlanPoint point, PlanPoint previous) const;

    /// Notes that the triangle lies at the point.
    void Remember(PlanPoint point, Index triangle);

    /// The triangle of the point's cell.
    [[nodiscard]] Index InCell(PlanPoint point) const { return cells_[CellOf(point)]; }

    /// Asks for the memory that InCell will read.
    void PrefetchCell(PlanPoint point) const;

private:
    [[nodiscard]] std::size_t CellOf(PlanPoint point) const;
    void Refine();

    const Array1<PlanPoint>& coord_;
    const TriangleList& triangles_;
    PlanPoint origin_;
    double unitX_ = 0; // parts of the extent per data unit
    double unitY_ = 0;
    std::size_t side_ = 1;
    double sideAsDouble_ = 1;
    std::size_t remembered_ = 0;
    std::vector<Index> cells_;
};

} // namespace terravo
