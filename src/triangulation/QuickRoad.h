// The triangulation that insertion in file order makes, by a quicker road.
//
// Data: plan positions in file order. Method: the points go in along a curve that fills the plane,
// each beside the one before, with every decision taken as file order takes it. Then the result is
// certified: where each decision stands clear of rounding errors, or is exact, the triangles are
// taken for those of file order. If one does not, the points go in again in file order.
#pragma once

#include "triangulation/modDelaunay2D.h"

namespace terravo {

/// Which road made the triangles.
enum class Road {
    AlongCurve,
    FileOrder // few points, or a decision that is not certain
};

/// Sets with fewer points always go in file order: there it costs the same.
inline constexpr Index kLeastForCurve = 2000;

/// Triangulates plan positions in the order of their numbers.
/// @param coord      positions of points 1..N.
/// @param triangles  sized for 2 * N by the caller; see modDelaunay2D::Triangulate, which would
///                   fill it with the same triangles, in another order.
/// @param[out] road  the road taken, when given.
/// @return see modDelaunay2D::Triangulate.
Index TriangulateQuickly(const Array1<PlanPoint>& coord, TriangleList& triangles,
                         const StopToken& stop = StopToken(), Road* road = nullptr);

/// Triangulates along the curve, whatever the number of points.
/// @return false when the outcome is not certain; the contents of the tables are undefined then.
bool TriangulateAlongCurve(const Array1<PlanPoint>& coord, TriangleList& triangles,
                           const StopToken& stop = StopToken());

} // namespace terravo
