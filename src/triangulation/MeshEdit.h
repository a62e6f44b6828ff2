// Repairs of the links about edges that a change of the triangulation has moved.
//
// Data: the tables of a Workspace. Method: an edge that moved to another triangle or slot is found
// from its end points alone. A neighbour across it is searched in three entries; for a hull edge
// the two links that mention it are rewritten. Hull edges that moved together are repaired in two
// passes, since one may be the predecessor of the other.
#pragma once

#include "triangulation/modDelaunay2D.h"

namespace terravo::modDelaunay2D {

/// Edge of triangle t that runs from one point to another; edge 0 when there is none.
inline int FindEdge(const Triangle& t, Index from, Index to) {
    for (int j = 1; j <= 3; ++j) {
        if (t.Vertex(j) == from) {
            return t.Vertex(NextEdge(j)) == to ? j : 0;
        }
    }
    return 0;
}

/// Makes the triangle across the moved edge point back to it.
/// @return false when that triangle does not exist or does not have the edge.
inline bool RelinkNeighbour(TriangleList& triangles, TriangleEdge moved) {
    const Triangle& t = triangles.table[moved.triangle];
    const Index across = t.Neighbour(moved.edge);
    if (across > triangles.count) {
        return false;
    }
    Triangle& other = triangles.table[across];
    const int j = FindEdge(other, t.Vertex(NextEdge(moved.edge)), t.Vertex(moved.edge));
    if (j == 0) {
        return false;
    }
    other.SetNeighbour(j, moved.triangle);
    return true;
}

/// First pass: the end point of a moved hull edge learns where the edge is now.
inline void NoteHullEdge(Workspace& work, TriangleEdge moved) {
    const Index end = work.triangles.Vertex(NextEdge(moved.edge), moved.triangle);
    work.hullEdgeInto[end] = LinkToHullEdge(moved);
}

/// Second pass: the predecessor of a moved hull edge points to it.
/// @return false when there is no hull edge where the start point says.
inline bool LinkPredecessor(Workspace& work, TriangleEdge moved) {
    const Index start = work.triangles.Vertex(moved.edge, moved.triangle);
    const TriangleEdge before = HullEdgeFromLink(work.hullEdgeInto[start]);
    if (before.triangle < 1 || before.triangle > work.triangles.count ||
        work.triangles.Neighbour(before.edge, before.triangle) > 0) {
        return false;
    }
    work.triangles.table[before.triangle].SetNeighbour(before.edge, LinkToHullEdge(moved));
    return true;
}

} // namespace terravo::modDelaunay2D
