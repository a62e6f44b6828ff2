#include "triangulation/HullRings.h"

#include <algorithm>

namespace terravo {
namespace {

std::vector<TriangleEdge> HullEdges(const TriangleList& triangles) {
    std::vector<TriangleEdge> edges;
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            if (triangles.Neighbour(j, t) < 0) {
                edges.push_back({t, j});
            }
        }
    }
    return edges;
}

bool IsBefore(const TriangleEdge& a, const TriangleEdge& b) {
    return a.triangle != b.triangle ? a.triangle < b.triangle : a.edge < b.edge;
}

} // namespace

std::vector<HullRing> HullRings(const TriangleList& triangles) {
    const std::vector<TriangleEdge> edges = HullEdges(triangles);
    std::vector<bool> used(edges.size());
    std::vector<HullRing> rings;
    for (std::size_t first = 0; first < edges.size(); ++first) {
        HullRing ring;
        std::size_t i = first;
        // A link that leads nowhere ends the ring.
        while (i < edges.size() && !used[i]) {
            used[i] = true;
            const TriangleEdge edge = edges[i];
            ring.push_back({triangles.Vertex(edge.edge, edge.triangle), edge});
            const TriangleEdge next =
                HullEdgeFromLink(triangles.Neighbour(edge.edge, edge.triangle));
            i = static_cast<std::size_t>(
                std::lower_bound(edges.begin(), edges.end(), next, IsBefore) - edges.begin());
        }
        if (!ring.empty()) {
            rings.push_back(std::move(ring));
        }
    }
    return rings;
}

} // namespace terravo
