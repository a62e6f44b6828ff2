// Estimated slopes of the terrain at the points.
//
// Data: the points and which of them share a triangle edge. Method: a quadratic surface through the
// point itself is fitted to the first and second ring of its neighbours, near ones counting most;
// where they are too few, a plane to the first ring. On a breakline a point has no one slope, and
// nothing beyond it says anything of the terrain on this side.
#pragma once

#include "contour/smoothing/PlanVector.h"
#include "contour/smoothing/SmoothContours.h"
#include "contour/smoothing/SmoothRun.h"

#include <vector>

namespace terravo::smoothing {

class PointGradients {
public:
    /// @param source    constrained edges between two triangles are breaklines.
    /// @param contours  of the source, with repeats: the slopes at the ends of the edges that they
    ///                  cross are estimated.
    PointGradients(const SmoothingSource& source, const ContourSet& contours,
                   const PieceRunner& inPieces);

    /// Whether the slope at a point is known.
    [[nodiscard]] bool IsKnown(Index point) const { return !std::isnan((*this)[point].x); }
    /// Height per unit of length towards x and y.
    [[nodiscard]] PlanPoint operator[](Index point) const {
        return gradients_[static_cast<std::size_t>(point)];
    }

private:
    class Ring;

    void FindNeighbours(const TriangleList& triangles);
    void FindBreaklines(const SmoothingSource& source);
    [[nodiscard]] std::vector<Index> FindWanted(const TriangleList& triangles,
                                                const ContourSet& contours) const;
    [[nodiscard]] std::span<const Index> NeighboursOf(Index point) const {
        const auto i = static_cast<std::size_t>(point);
        return std::span(neighbours_).subspan(first_[i], first_[i + 1] - first_[i]);
    }
    void Collect(Index point, Ring& ring) const;

    std::vector<PlanPoint> gradients_; // of point i at i; not a number where unknown
    std::vector<std::size_t> first_;   // of point i in neighbours_, at i
    std::vector<Index> neighbours_;
    std::vector<char> isOnBreakline_; // of point i at i
};

} // namespace terravo::smoothing
