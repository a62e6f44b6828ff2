#include "survey/check/MeshOrder.h"

#include "util/Parallel.h"

#include <algorithm>

namespace terravo {

MeshOrder::MeshOrder(const PointSet& points, const TriangleList& list) {
    Array1<Index> placeOf(points.count, 0);
    number.Reserve(points.count);
    triangles.count = list.count;
    triangles.table.Resize(list.count);
    for (Index t = 1; t <= list.count; ++t) {
        Triangle triangle = list.table[t];
        for (Index& vertex : triangle.vertices) {
            Index& place = placeOf[vertex];
            if (place == 0) {
                number.Append(vertex);
                place = number.UpperBound();
            }
            vertex = place;
        }
        triangles.table[t] = triangle;
    }
    FillCoordinates(points);
}

void MeshOrder::FillCoordinates(const PointSet& points) {
    constexpr Index kPiece = 65536;
    for (Array1<double>* const values : {&x, &y, &z}) {
        values->Resize(Count());
    }
    InParallel(Count() / kPiece + 1, [&](int piece) {
        const Index end = std::min(Count(), (piece + 1) * kPiece);
        for (Index i = piece * kPiece + 1; i <= end; ++i) {
            x[i] = points.x[number[i]];
            y[i] = points.y[number[i]];
            z[i] = points.z[number[i]];
        }
    });
}

} // namespace terravo
