// How far each height is from what its neighbours say, and how far heights are round about.
//
// Data: the triangulated points. Method: with the cotangents of the angles opposite an edge as its
// weight, the weighted mean of the neighbours of an inner point lies exactly at the point, so the
// mean of their heights is its own on every plane; in a Delaunay triangulation no weight is
// negative.
#pragma once

#include "survey/check/MeshOrder.h"

#include <vector>

namespace terravo {

struct FirstLook {
    explicit FirstLook(const MeshOrder& points);
    /// Looks again where the heights of some corners have changed: all is as in a new look, digit
    /// for digit.
    void Renew(const MeshOrder& points, std::vector<Index> changed);

    Array1<float> deviation; // of each corner from the mean of its neighbours; 0 on the hull
    Array1<float> sizeAbout; // mean size of the deviations up to one edge away
    Array1<float> roughness; // and up to two edges away
};

} // namespace terravo
