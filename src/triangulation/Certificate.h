// Whether a triangulation is taken for the one that insertion in file order makes.
//
// Data: the tables of a triangulation and the rank of every point in the insertion order. Method:
// every decision on which the triangulation rests is taken again, each by itself, and the value it
// is taken on compared with a bound on its rounding error. docs/triangulation.md has the argument,
// which is an estimate in one of its steps.
#pragma once

#include "triangulation/TriangleList.h"

namespace terravo {

/// What the certificate reads.
struct RankedMesh {
    const Array1<PlanPoint>& coord;
    const Array1<Index>& rank; // place of each point in the insertion order, all different
    const TriangleList& triangles;
    double span;       // longer side of the extent of all points
    double exactReach; // of ExactReach
};

/// The largest coordinate difference with which the tests compute without rounding, because all
/// coordinates are multiples of one step; 0 when there is no such step.
double ExactReach(const Array1<PlanPoint>& coord, double span);

/// True when every decision is certain. The links between the triangles must be sound and every
/// point a corner, or equal to a corner of lower rank.
bool IsCertain(const RankedMesh& mesh);

} // namespace terravo
