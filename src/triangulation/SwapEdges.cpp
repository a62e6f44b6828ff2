// Swaps by the empty-circle rule about a new point.
//
// Method: a triangle is taken from the stack and its edge opposite the new point put to the test; a
// swap puts both triangles on the stack again.
#include "triangulation/MeshEdit.h"
#include "triangulation/modGeometria.h"

namespace terravo::modDelaunay2D {
namespace {

// Every triangle on the stack has the new point m as vertex 1, so the edge to test is edge 2.
constexpr int kOppositeEdge = 2;

// Turns the edge that t and u share, t = (m, b, c), u = (.., c, b, d), into the edge m-d:
// t becomes (m, b, d), u becomes (m, d, c).
// False when a neighbour does not link back.
bool SwapDiagonal(Workspace& work, Index tNumber, Index uNumber, int sharedEdgeOfU) {
    TriangleList& triangles = work.triangles;
    Triangle& t = triangles.table[tNumber];
    Triangle& u = triangles.table[uNumber];
    const auto [m, b, c] = t.vertices;
    const int edgeBd = NextEdge(sharedEdgeOfU);
    const int edgeDc = NextEdge(edgeBd);
    const Index d = u.Vertex(edgeDc);
    const Index acrossMb = t.Neighbour(1);
    const Index acrossCm = t.Neighbour(3);
    const Index acrossBd = u.Neighbour(edgeBd);
    const Index acrossDc = u.Neighbour(edgeDc);
    t = Triangle{{m, b, d}, {acrossMb, acrossBd, uNumber}};
    u = Triangle{{m, d, c}, {tNumber, acrossDc, acrossCm}};

    const TriangleEdge bd{tNumber, 2};
    const TriangleEdge dc{uNumber, 2};
    const TriangleEdge cm{uNumber, 3};
    bool sound = true;
    if (acrossBd > 0) {
        sound = RelinkNeighbour(triangles, bd) && sound;
    } else {
        NoteHullEdge(work, bd);
    }
    if (acrossDc < 0) {
        NoteHullEdge(work, dc);
    }
    if (acrossCm > 0) {
        sound = RelinkNeighbour(triangles, cm) && sound;
    } else {
        NoteHullEdge(work, cm);
    }
    if (acrossBd < 0) {
        sound = LinkPredecessor(work, bd) && sound;
    }
    if (acrossDc < 0) {
        sound = LinkPredecessor(work, dc) && sound;
    }
    if (acrossCm < 0) {
        sound = LinkPredecessor(work, cm) && sound;
    }
    return sound;
}

// True when the diagonal b-c of the quadrilateral m, b, d, c gives way to m-d.
bool GivesWay(const Array1<PlanPoint>& coord, Index m, Index b, Index d, Index c) {
    const PlanPoint& pm = coord[m];
    const PlanPoint& pb = coord[b];
    const PlanPoint& pd = coord[d];
    const PlanPoint& pc = coord[c];
    return modGeometria::DiagonalChoice(pm.x, pm.y, pb.x, pb.y, pd.x, pd.y, pc.x, pc.y) == 1;
}

} // namespace

Index SwapEdges(Index m, Workspace& work) {
    TriangleList& triangles = work.triangles;
    while (work.stack.top > 0) {
        const Index tNumber = work.stack.items[work.stack.top--];
        const Triangle& t = triangles.table[tNumber];
        const Index uNumber = t.Neighbour(kOppositeEdge);
        if (uNumber <= 0) {
            continue;
        }
        if (uNumber > triangles.count) {
            return Ierr::kIndexOutOfRange;
        }
        const Index b = t.vertices[1];
        const Index c = t.vertices[2];
        const Triangle& u = triangles.table[uNumber];
        const int shared = FindEdge(u, c, b);
        if (shared == 0 || u.Neighbour(shared) != tNumber) {
            return Ierr::kBrokenLink;
        }
        const Index d = u.Vertex(NextEdge(NextEdge(shared)));
        if (d == m) {
            return Ierr::kBrokenLink;
        }
        if (!GivesWay(work.coord, m, b, d, c)) {
            continue;
        }
        ++work.effort;
        if (!SwapDiagonal(work, tNumber, uNumber, shared)) {
            return Ierr::kBrokenLink;
        }
        if (!work.stack.Push(tNumber) || !work.stack.Push(uNumber)) {
            return Ierr::kStackFull;
        }
    }
    return Ierr::kDone;
}

} // namespace terravo::modDelaunay2D
