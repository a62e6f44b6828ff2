// The triangulation of a set of points of any size and shape, by exact signs.
//
// Data: plan positions in file order. Method: repeats of an earlier point are dropped; the others
// go into an ExactMesh in random rounds, an eighth of the points of each before the rest, every
// round along a curve that fills the plane. So each point is found near the one before, and few
// triangles change with it.
#pragma once

#include "triangulation/TriangleList.h"
#include "util/StopToken.h"

namespace terravo {

/// Triangulates plan positions. Where four points lie exactly on one circle, of the two diagonals
/// the one that ends at the latest of the four in file order gives way.
/// @param coord           positions of points 1..N.
/// @param[out] triangles  as TriangleList says, numbered along the curve; sized for the triangles
///                        that there are.
/// @return modDelaunay2D::Ierr: kDone; kAllCollinear for points on one line and for fewer than
///         three places; kOutOfReach when a coordinate is; kStopped. The list is empty then.
Index TriangulateExactly(const Array1<PlanPoint>& coord, TriangleList& triangles,
                         const StopToken& stop = StopToken());

} // namespace terravo
