// Which triangles of a constrained triangulation are shown.
//
// Data: all triangles with the marks of their edges. Method: two floods from the hull inwards count
// the rings that are crossed, one for the boundary, one for the holes; then triangles at the rim
// with a long outer side are taken away, the longest first. What remains is a list of its own, with
// links along its own rims.
#pragma once

#include "triangulation/constrained/ConstrainedSurface.h"

#include <string>
#include <vector>

namespace terravo {

/// 1 where a triangle is hidden, else 0.
using HiddenTriangles = Array1<char>;

/// Triangles outside the boundary rings, where there are any, or inside the holes.
HiddenTriangles HideByRings(const ConstrainedSurface& surface);

/// Hides triangles that can be reached from outside across edges longer than a length, but never
/// across a constrained one.
/// @param[in,out] hidden  of all triangles.
/// @return how many were hidden.
Index HideLongSides(const Array1<PlanPoint>& coord, const TriangleList& triangles,
                    const EdgeMarks& constrained, double longestSide, HiddenTriangles& hidden);

/// The triangles that are not hidden, in their order, with neighbours among each other; negative
/// entries link the edges of each rim: the outer ones counter-clockwise, those of holes clockwise.
TriangleList VisibleTriangles(const TriangleList& triangles, const HiddenTriangles& hidden);

/// A length for the longest side, made from the points alone.
struct LongestSideProposal {
    double length = 0;         // three times the step
    double step = 0;           // the longest that one needs to walk from any point to any other
    std::vector<Index> strays; // points behind an isolated leap, by themselves or a few
    Index sites = 1;           // parts that only leaps join, strays not counted
};

/// @param triangles  of all points, without constraints.
LongestSideProposal ProposeLongestSide(const Array1<PlanPoint>& coord,
                                       const TriangleList& triangles);

} // namespace terravo
