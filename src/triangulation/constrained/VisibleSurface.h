// Which triangles of a constrained triangulation are shown.
//
// Data: all triangles with the marks of their edges. Method: two floods from the hull inwards count
// the rings that are crossed, one for the boundary, one for the holes; then triangles at the rim
// with a long outer side are taken away, and those that lie at the rim then. What remains is a list
// of its own, with links along its own rims.
#pragma once

#include "triangulation/constrained/ConstrainedSurface.h"

#include <vector>

namespace terravo {

/// 1 where a triangle is hidden, else 0; one a triangle of the list.
using HiddenTriangles = Array1<char>;

/// Triangles outside the boundary rings, where any of their edges is marked, or inside the holes.
HiddenTriangles HideByRings(const ConstrainedSurface& surface);

/// Hides triangles that can be reached from outside, or from what is hidden, across edges longer
/// than a length, but never across a constrained one.
/// @param coord            of all points of the triangles.
/// @param constrained      of the same triangles; may be empty: none is.
/// @param[in,out] hidden   of all triangles.
/// @return how many were hidden.
Index HideLongSides(const Array1<PlanPoint>& coord, const TriangleList& triangles,
                    const EdgeMarks& constrained, double longestSide, HiddenTriangles& hidden);

/// The triangles that are not hidden, in their order, with neighbours among each other; negative
/// entries link the edges of each rim: the outer ones counter-clockwise, those of holes clockwise.
/// Where rims touch in a point, a link stays within the triangles that hang together about it; so
/// an outer rim that a hole touches goes round the hole as well. The list itself when none is
/// hidden.
TriangleList VisibleTriangles(const TriangleList& triangles, const HiddenTriangles& hidden);

/// The same triangles with links along their rims in the place of every neighbour entry below 1.
TriangleList WithRims(const TriangleList& triangles);

/// Points that are corners of triangles, but only of hidden ones; ascending.
std::vector<Index> PointsWithoutTriangle(const TriangleList& triangles,
                                         const HiddenTriangles& hidden);

/// What a longest side would take away.
struct LongestSideEffect {
    Index triangles = 0;       // that would be hidden
    std::vector<Index> points; // that would lose their last triangle, ascending
};

/// @param hidden  what is hidden already.
LongestSideEffect EffectOfLongestSide(const Array1<PlanPoint>& coord, const TriangleList& triangles,
                                      const EdgeMarks& constrained, double longestSide,
                                      const HiddenTriangles& hidden);

/// A length for the longest side, made from the points alone.
struct LongestSideProposal {
    double length = 0; // three times the step
    double step = 0;   // the longest that one needs to walk from any point to any other
    /// Points behind an isolated leap, by themselves or a few, ascending: in parts of fewer than
    /// ten points that are fewer than a tenth of those of the largest part.
    std::vector<Index> strays;
    Index sites = 1; // all other parts, which only leaps join
};

/// A leap is a link of the shortest tree over all points that is more than ten times as long as the
/// next shorter one, or longer than such a link; only the longest links can be leaps: 0.5 % or
/// three, but no more than a quarter.
/// @param triangles  of all points, without constraints.
LongestSideProposal ProposeLongestSide(const Array1<PlanPoint>& coord,
                                       const TriangleList& triangles);

} // namespace terravo
