// Volumes by an obvious, slow road: every triangle against every other, in rational numbers.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

namespace terravo::test {

struct RationalVolumes {
    double cut = 0; // rounded once, at the end
    double fill = 0;
    double planArea = 0;
};

RationalVolumes RationalVolumeBetween(const PointSet& first, const TriangleList& firstTriangles,
                                      const PointSet& second, const TriangleList& secondTriangles);

} // namespace terravo::test
