// How far each height is from what its neighbours say, and how far heights are round about.
//
// Data: the triangulated points. Method: with the cotangents of the angles opposite an edge as its
// weight, the weighted mean of the neighbours of an inner point lies exactly at the point, so the
// mean of their heights is its own on every plane; in a Delaunay triangulation no weight is
// negative.
#pragma once

#include "survey/check/MeshOrder.h"

namespace terravo {

struct FirstLook {
    explicit FirstLook(const MeshOrder& points);

    Array1<float> deviation;  // of each corner from the mean of its neighbours; 0 on the hull
    Array1<float> roughness;  // mean size of the deviations up to two edges away
    Array1<Index> triangleOf; // one of the triangles at the corner
    Array1<char> isOnHull;
};

} // namespace terravo
