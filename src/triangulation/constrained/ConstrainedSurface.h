// A triangulation with breaklines, rings and held sides in it.
//
// Data: the triangulation of the points and what is laid into it. Method: the triangles go into an
// ExactMesh; the vertices of all lines join the points; each side of a line is made an edge by
// swaps, after which the edges about it are swapped until every circle is empty again but for
// points beyond a constrained edge. What comes out is a function of the points and the accepted
// lines: where a line has to be left out, all begins anew without it.
#pragma once

#include "triangulation/constrained/SurfaceConstraints.h"
#include "util/StopToken.h"

#include <cstdint>

namespace terravo {

/// Of a triangle: bit j - 1 for edge j.
using EdgeMark = std::uint8_t;
using EdgeMarks = Array1<EdgeMark>;

/// How a line runs through the triangulation.
struct LaidLine {
    LineRole role = LineRole::Breakline;
    std::size_t number = 0; // among those of its role
    /// Points from edge to edge, those that were added too; several where the line leaves the hull.
    /// A closed course repeats its first point.
    std::vector<std::vector<Index>> courses;
};

struct ConstrainedSurface {
    /// Points N + 1 and up: vertices of lines, crossings, and where a ring without heights crosses
    /// sides.
    std::vector<SpacePoint> added;
    TriangleList triangles;      // all of them, within the convex hull
    EdgeMarks constrained;       // edges that no swap may take away, on both sides of each
    EdgeMarks boundary;          // of them, those that an odd number of boundary rings runs along
    EdgeMarks holes;             // likewise
    std::int64_t crossings = 0;  // points made where lines cross
    std::int64_t lineEdges = 0;  // edges of breaklines, rings and held sides, each counted once
    std::vector<LaidLine> lines; // breaklines and rings that were not left out
    std::vector<SurfaceRemark> remarks;
    bool isStopped = false; // all else is empty then
};

/// Lays lines into a triangulation.
/// @param coord    places of points 1..N.
/// @param heights  of the same points.
/// @param base     their triangulation, made by TriangulatePoints.
/// @param stop     stage "constrain".
ConstrainedSurface MakeConstrainedSurface(const Array1<PlanPoint>& coord,
                                          const Array1<double>& heights, const TriangleList& base,
                                          const SurfaceConstraints& constraints,
                                          const StopToken& stop = StopToken());

} // namespace terravo
