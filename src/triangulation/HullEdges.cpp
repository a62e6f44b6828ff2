// The hull edges that a point outside sees.
#include "triangulation/modDelaunay2D.h"
#include "triangulation/modGeometria.h"

namespace terravo::modDelaunay2D {
namespace {

bool IsHullEdge(const TriangleList& triangles, TriangleEdge edge) {
    return edge.triangle >= 1 && edge.triangle <= triangles.count &&
           triangles.Neighbour(edge.edge, edge.triangle) < 0;
}

bool Sees(PlanPoint point, const Workspace& work, TriangleEdge edge) {
    const Triangle& t = work.triangles.table[edge.triangle];
    const PlanPoint& a = work.coord[t.Vertex(edge.edge)];
    const PlanPoint& b = work.coord[t.Vertex(NextEdge(edge.edge))];
    return modGeometria::SideOfLine(point.x, point.y, a.x, a.y, b.x, b.y, 0.0) > 0;
}

TriangleEdge NextHullEdge(const Workspace& work, TriangleEdge edge) {
    return HullEdgeFromLink(work.triangles.Neighbour(edge.edge, edge.triangle));
}

TriangleEdge PreviousHullEdge(const Workspace& work, TriangleEdge edge) {
    const Index startPoint = work.triangles.Vertex(edge.edge, edge.triangle);
    return HullEdgeFromLink(work.hullEdgeInto[startPoint]);
}

// Moves along the hull while the next edge is visible. No hull has as many edges as there are
// triangles plus three, and none is visible all the way round: either would be a broken ring.
template <class Step>
bool ExtendRun(PlanPoint point, const Workspace& work, TriangleEdge seen, TriangleEdge& end,
               Step step) {
    for (Index steps = 0; steps < work.triangles.count + 3; ++steps) {
        const TriangleEdge next = step(work, end);
        if (!IsHullEdge(work.triangles, next) || next == seen) {
            return false;
        }
        if (!Sees(point, work, next)) {
            return true;
        }
        end = next;
    }
    return false;
}

} // namespace

VisibleRun VisibleBoundaryEdges(PlanPoint point, const Workspace& work, TriangleEdge seen) {
    VisibleRun run{seen, seen, Ierr::kDone};
    if (!IsHullEdge(work.triangles, seen) ||
        !ExtendRun(point, work, seen, run.last, NextHullEdge) ||
        !ExtendRun(point, work, seen, run.first, PreviousHullEdge)) {
        run.ierr = Ierr::kBrokenLink;
    }
    return run;
}

} // namespace terravo::modDelaunay2D
