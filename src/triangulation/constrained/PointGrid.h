// Where to begin the search for a place in a triangulation.
//
// Data: a coarse grid over the points, with one point for a cell. Method: the point of the cell in
// which the place lies is a few triangles away from it.
#pragma once

#include "triangulation/exact/ExactMesh.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace terravo {

class PointGrid {
public:
    /// @param mesh  whose points are looked at; those that it does not have are left out.
    explicit PointGrid(const ExactMesh& mesh) {
        const Index count = mesh.PointCount();
        if (count == 0) {
            return;
        }
        PlanPoint high = low_ = mesh.Position(1);
        for (Index i = 2; i <= count; ++i) {
            const PlanPoint& p = mesh.Position(i);
            low_ = {std::min(low_.x, p.x), std::min(low_.y, p.y)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y)};
        }
        side_ = std::clamp(static_cast<int>(std::sqrt(count / kPointsACell)), 1, kMostSide);
        perX_ = side_ / std::max(high.x - low_.x, kLeastExtent);
        perY_ = side_ / std::max(high.y - low_.y, kLeastExtent);
        cells_.assign(static_cast<std::size_t>(side_) * static_cast<std::size_t>(side_), 0);
        for (Index i = 1; i <= count; ++i) {
            if (mesh.TriangleAt(i) != 0) {
                cells_[CellOf(mesh.Position(i))] = i;
            }
        }
    }

    /// @return a point of the mesh, or 0 when the cell has none.
    [[nodiscard]] Index Near(PlanPoint place) const {
        return cells_.empty() ? 0 : cells_[CellOf(place)];
    }

private:
    static constexpr double kPointsACell = 4;
    static constexpr int kMostSide = 512;
    static constexpr double kLeastExtent = 1e-200;

    [[nodiscard]] std::size_t Row(double offset, double perUnit) const {
        return static_cast<std::size_t>(std::clamp(offset * perUnit, 0.0, side_ - 1.0));
    }
    [[nodiscard]] std::size_t CellOf(PlanPoint place) const {
        return Row(place.y - low_.y, perY_) * static_cast<std::size_t>(side_) +
               Row(place.x - low_.x, perX_);
    }

    PlanPoint low_;
    int side_ = 0;
    double perX_ = 0;
    double perY_ = 0;
    std::vector<Index> cells_;
};

} // namespace terravo
