#include "triangulation/FirstTriangle.h"

#include "triangulation/MeshEdit.h"
#include "triangulation/modGeometria.h"

#include <cmath>

namespace terravo::modDelaunay2D {
namespace {

// The smaller magnitude sets the tolerance, so a row counts only when both values are off zero.
bool AreDistinct(PlanPoint p, PlanPoint q) {
    const auto rowDiffers = [](double a, double b) {
        const double c = modUtilita::MinOfList({std::fabs(a), std::fabs(b)});
        return std::fabs(a - b) > modGeometria::kTolerance * c && c > modGeometria::kTolerance;
    };
    return rowDiffers(p.x, q.x) || rowDiffers(p.y, q.y);
}

} // namespace

FirstTriangle FindFirstTriangle(const Array1<PlanPoint>& coord, const Array1<Index>& order) {
    const PlanPoint& p1 = coord[order[1]];
    const PlanPoint& p2 = coord[order[2]];
    if (!AreDistinct(p1, p2)) {
        return {};
    }
    for (Index i = 3; i <= order.UpperBound(); ++i) {
        const PlanPoint& p = coord[order[i]];
        const int side = modGeometria::SideOfLine(p.x, p.y, p1.x, p1.y, p2.x, p2.y, 0.0);
        if (side != 0) {
            return {true, Ierr::kDone, i, side};
        }
    }
    return {false, Ierr::kAllCollinear, 0, 0};
}

void MakeFirstTriangle(Workspace& work, Index m1, Index m2, Index m3, int side) {
    TriangleList& triangles = work.triangles;
    triangles.count = 1;
    Triangle& first = triangles.table[1];
    first.vertices = side < 0 ? std::array{m1, m2, m3} : std::array{m2, m1, m3};
    first.neighbours = {-4, -5, -3};
    for (int j = 1; j <= 3; ++j) {
        NoteHullEdge(work, {1, j});
    }
}

} // namespace terravo::modDelaunay2D
