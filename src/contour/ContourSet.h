// Contours as things: the joined lines of every level.
//
// Data: for each level the vertices of its lines, one line after another, each with the triangle
// edge that it lies on, and the places that the level touches in a single point. Method: a point at
// or above the level is above, any other below; an edge is crossed when its ends differ. So a
// triangle has two crossed edges or none, lines never branch, and they end at the edge of the
// surface or nowhere. See docs/contours.md.
#pragma once

#include "contour/LevelSet.h"
#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"
#include "util/StopToken.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace terravo {

struct ContourVertex {
    double x = 0; // data units, as the points
    double y = 0;
    /// The edge that the vertex lies on, as an edge of the triangle in which the line arrives here;
    /// at both ends of an open line the edge of the surface; on a ridge any edge of the point. Edge
    /// 0 of a triangle: within it, as smooth lines made straight have it.
    TriangleEdge edge;
};

struct ContourLine {
    std::size_t first = 0; // place of the first vertex in ContourLevel::vertices
    std::size_t count = 0; // of vertices, 2 at least; a closed line does not repeat the first
    bool closed = false;
    /// A crest exactly at the level, with lower ground on both sides. Only ridges may end inside
    /// the surface, and they have no higher side.
    bool ridge = false;
};

/// The lines of one level: the open ones, then the closed ones, each by the number of the triangle
/// in which it was found first, then the ridges. Higher ground lies on the left.
struct ContourLevel {
    double value = 0; // height
    std::vector<ContourVertex> vertices;
    std::vector<ContourLine> lines;
    std::vector<ContourVertex> isolatedPoints; // peaks exactly at the level

    [[nodiscard]] std::span<const ContourVertex> VerticesOf(const ContourLine& line) const {
        return std::span(vertices).subspan(line.first, line.count);
    }
};

/// One a level, in the order of the levels.
using ContourSet = Array1<ContourLevel>;

/// What becomes of vertices of a line that follow each other in the same place, because several
/// edges that it crosses meet in a point at the level.
enum class Repeats {
    LeaveOut, // neighbouring vertices differ, ridges and isolated points are apart
    Keep      // every crossed edge has its vertex; peaks and ridges are closed lines without area
};

/// Joins the lines of every level.
/// @param triangles  of the points; their heights must be finite, and the difference of any two.
/// @param levels     any values in any order; in increasing order it is quick.
/// @param stop       stage "contour", asked after every level.
/// @return nothing when it was stopped.
std::optional<ContourSet> MakeContourSet(const PointSet& points, const TriangleList& triangles,
                                         const LevelSet& levels,
                                         const StopToken& stop = StopToken(),
                                         Repeats repeats = Repeats::LeaveOut);

/// Point numbers of the ends of an edge that a level crosses.
struct EdgeEnds {
    Index lower = 0;
    Index upper = 0;
};

/// The ends of an edge, the lower first. Only for an edge of two heights.
EdgeEnds EndsOf(const PointSet& points, const TriangleList& triangles, TriangleEdge edge);

/// How far up an edge a level lies, 0 at the lower end and 1 at the upper one.
inline double PartOfEdge(const PointSet& points, EdgeEnds ends, double level) {
    return (level - points.z[ends.lower]) / (points.z[ends.upper] - points.z[ends.lower]);
}

/// The place of such a part. Both triangles of an edge get the same one; 1 gives the coordinates of
/// the upper end itself, and no part a place beyond an end.
inline PlanPoint PlaceOnEdge(const PointSet& points, EdgeEnds ends, double part) {
    return {std::lerp(points.x[ends.lower], points.x[ends.upper], part),
            std::lerp(points.y[ends.lower], points.y[ends.upper], part)};
}

/// The triangle on the other side of an edge; 0 when there is none: the edge of the surface.
inline Index TriangleAcross(const TriangleList& triangles, TriangleEdge edge) {
    return std::max(triangles.Neighbour(edge.edge, edge.triangle), 0);
}

} // namespace terravo
