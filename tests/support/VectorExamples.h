// Content for the tests of vector files.
#pragma once

#include "export/vector/VectorContent.h"

namespace terravo::test {

/// Four points of a square and one in its middle, four triangles; a closed and an open contour, a
/// band with a hole, one line of each kind.
inline VectorContent SmallContent() {
    VectorContent content;
    content.name = "small";
    content.parts = {VectorPart::Contours,  VectorPart::Bands, VectorPart::Triangles,
                     VectorPart::Points,    VectorPart::Hull,  VectorPart::Boundary,
                     VectorPart::Breaklines};
    content.points = {{0, 0, 1}, {10, 0, 1}, {10, 10, 1}, {0, 10, 1}, {5, 5, 3.25}};
    content.triangles = {{{1, 2, 5}, {0, 2, 4}},
                         {{2, 3, 5}, {0, 3, 1}},
                         {{3, 4, 5}, {0, 4, 2}},
                         {{4, 1, 5}, {0, 1, 3}}};
    content.levels = {{2, "2.0", false}, {2.5, "2.5", true}};
    content.contourVertices = {{2, 2}, {8, 2}, {8, 8}, {2, 8}, {4, 4}, {6.125, 4}, {6, 6}};
    content.contours = {{0, 4, 1, true}, {4, 3, 2, false}};
    LevelBand band;
    band.low = 1;
    band.high = 2;
    band.vertices = {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {2, 2}, {2, 8}, {8, 8}, {8, 2}};
    band.polygons = {{{0, 4}, {{4, 4}}}};
    content.bands = {band};
    content.hull = {{{content.points.begin(), content.points.begin() + 4}, true, ""}};
    content.boundary = {{{{1, 1, 1}, {9, 1, 1}, {9, 9, 1.5}}, true, "fence"}};
    content.breaklines = {{{{0, 0, 1}, {5, 5, 3.25}}, false, "ridge"}};
    return content;
}

} // namespace terravo::test
