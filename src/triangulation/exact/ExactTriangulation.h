// The triangulation of a set of points of any size and shape, by exact signs.
//
// Data: plan positions in file order. Method: repeats of an earlier point are dropped; the others
// are divided into strips, which go into one ExactMesh at the same time on as many threads as there
// are cores, and the triangulations of the strips are joined. Within a strip the points go in in
// random rounds, an eighth of the points of each before the rest, every round along a curve that
// fills the strip. So each point is found near the one before, and few triangles change with it.
#pragma once

#include "triangulation/TriangleList.h"
#include "util/StopToken.h"

namespace terravo {

/// With fewer points a strip starting threads and joining cost more than they bring.
constexpr Index kPointsAStrip = 25000;

/// Triangulates plan positions. Where four points lie exactly on one circle, of the two diagonals
/// the one that ends at the latest of the four in file order gives way.
/// @param coord           positions of points 1..N.
/// @param[out] triangles  as TriangleList says, numbered along the curve; sized for the triangles
///                        that there are.
/// @param pointsAStrip    the least number of points in a strip, about.
/// @return modDelaunay2D::Ierr: kDone; kAllCollinear for points on one line and for fewer than
///         three places; kOutOfReach when a coordinate is; kStopped. The list is empty then.
Index TriangulateExactly(const Array1<PlanPoint>& coord, TriangleList& triangles,
                         const StopToken& stop = StopToken(), Index pointsAStrip = kPointsAStrip);

} // namespace terravo
