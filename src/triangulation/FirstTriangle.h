// The rules on the first three points of an insertion order.
//
// Data: plan positions and an insertion order. Method: the first two points must count as distinct,
// and the first point off the line through them comes third.
#pragma once

#include "triangulation/modDelaunay2D.h"

namespace terravo::modDelaunay2D {

struct FirstTriangle {
    bool found = false;
    Index ierr = 0;          // of the whole triangulation when there is no first triangle
    Index thirdPosition = 0; // position in the order of the point that comes third
    int side = 0;            // of that point, as SideOfLine tells it for the line from 1st to 2nd
};

/// Applies the rules.
/// @param order  at least two numbers of points.
/// @return not found with kDone when the first two points do not count as distinct (a coordinate
///         counts only when both its values are off zero), with kAllCollinear when every point lies
///         on the line through them.
FirstTriangle FindFirstTriangle(const Array1<PlanPoint>& coord, const Array1<Index>& order);

/// Makes triangle 1 of three points that are not on one line.
/// @param side  of the third point, as SideOfLine(m3; m1 -> m2) tells it.
void MakeFirstTriangle(Workspace& work, Index m1, Index m2, Index m3, int side);

} // namespace terravo::modDelaunay2D
