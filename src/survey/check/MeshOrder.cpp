#include "survey/check/MeshOrder.h"

#include "util/Parallel.h"
#include "util/Prefetch.h"

#include <algorithm>

namespace terravo {

MeshOrder::MeshOrder(const PointSet& points, const TriangleList& list)
    : triangleOf(points.count), isOnHull(points.count, 0) {
    constexpr Index kAhead = 16;
    Array1<Index> placeOf(points.count, 0);
    number.Reserve(points.count);
    triangles.count = list.count;
    triangles.table.Reserve(list.count);
    for (Index t = 1; t <= list.count; ++t) {
        for (const Index vertex : list.table[std::min(t + kAhead, list.count)].vertices) {
            PrefetchLine(&placeOf[vertex]);
        }
        AddTriangle(t, list.table[t], placeOf);
    }
    triangleOf.Resize(Count());
    isOnHull.Resize(Count());
    FillCoordinates(points);
}

void MeshOrder::AddTriangle(Index t, const Triangle& triangle, Array1<Index>& placeOf) {
    Triangle copy = triangle;
    for (Index& vertex : copy.vertices) {
        Index& place = placeOf[vertex];
        if (place == 0) {
            number.Append(vertex);
            place = number.UpperBound();
        }
        vertex = place;
        triangleOf[place] = t;
    }
    for (int j = 1; j <= 3; ++j) {
        if (copy.Neighbour(j) < 0) {
            isOnHull[copy.Vertex(j)] = 1;
            isOnHull[copy.Vertex(NextEdge(j))] = 1;
        }
    }
    triangles.table.Append(copy);
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
