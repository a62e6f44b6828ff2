// The corners of a triangulation in the order in which its triangles meet them.
//
// Data: copies of the coordinates and of the triangles with numbers of their own, and which points
// these are. Method: the triangles of a large set are numbered along a curve that fills the plane,
// while a file may have its points in any order; in the order of the triangles, neighbours lie
// beside each other in memory.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

namespace terravo {

struct MeshOrder {
    /// Takes the points that are corners.
    MeshOrder(const PointSet& points, const TriangleList& list);

    [[nodiscard]] Index Count() const { return number.UpperBound(); }

    Array1<Index> number; // of each corner in the point set
    Array1<double> x;
    Array1<double> y;
    Array1<double> z;
    TriangleList triangles; // the same ones; their vertices are corners

private:
    void FillCoordinates(const PointSet& points);
};

} // namespace terravo
