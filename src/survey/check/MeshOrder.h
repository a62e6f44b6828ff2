// The corners of a triangulation in the order in which its triangles meet them.
//
// Data: copies of the coordinates and of the triangles with numbers of their own, and which points
// these are; of each corner one of its triangles. Method: the triangles of a large set are numbered
// along a curve that fills the plane, while a file may have its points in any order; in the order
// of the triangles, neighbours lie beside each other in memory.
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
    TriangleList triangles;   // the same ones; their vertices are corners
    Array1<Index> triangleOf; // the last of the triangles at a corner
    Array1<char> isOnHull;    // of each corner

private:
    void AddTriangle(Index t, const Triangle& triangle, Array1<Index>& placeOf);
    void FillCoordinates(const PointSet& points);
};

} // namespace terravo
