// The triangles of a point set and the links between them.
//
// Data: one record a triangle, 24 bytes, so that a walk touches one cache line for the corners and
// the neighbours together. All numbers are 1-based. Method: edge j of a triangle runs from its
// vertex j to its vertex j + 1 (vertex 3 to vertex 1); a positive neighbour entry is the triangle
// across that edge, a negative one marks a hull edge and encodes the next hull edge
// counter-clockwise.
#pragma once

#include "util/Array1.h"

#include <array>

namespace terravo {

/// Plan position of a point, data units.
struct PlanPoint {
    double x = 0;
    double y = 0;

    bool operator==(const PlanPoint&) const = default;
};

/// Edge number that follows j (1, 2, 3) around a triangle.
constexpr int NextEdge(int j) {
    return j == 3 ? 1 : j + 1;
}

/// One edge of one triangle, both 1-based.
struct TriangleEdge {
    Index triangle = 0;
    int edge = 0;

    bool operator==(const TriangleEdge&) const = default;
};

/// The hull edge that a negative neighbour entry points to.
constexpr TriangleEdge HullEdgeFromLink(Index entry) {
    const Index link = -entry;
    return {link / 3, static_cast<int>(link % 3) + 1};
}

/// The neighbour entry that points to a hull edge: -(3 * triangle + edge - 1).
constexpr Index LinkToHullEdge(TriangleEdge edge) {
    return -(3 * edge.triangle + static_cast<Index>(edge.edge) - 1);
}

struct Triangle {
    std::array<Index, 3> vertices{};   // point numbers, counter-clockwise
    std::array<Index, 3> neighbours{}; // see above

    /// Point number of vertex j, 1 <= j <= 3.
    [[nodiscard]] Index Vertex(int j) const { return vertices[static_cast<std::size_t>(j) - 1]; }
    /// Neighbour entry of edge j, 1 <= j <= 3.
    [[nodiscard]] Index Neighbour(int j) const {
        return neighbours[static_cast<std::size_t>(j) - 1];
    }
    void SetNeighbour(int j, Index entry) { neighbours[static_cast<std::size_t>(j) - 1] = entry; }
};

/// Columns 1..count of the tables are triangles; the caller sizes the tables for 2 * N of them.
struct TriangleList {
    Index count = 0;
    Array1<Triangle> table;

    TriangleList() = default;
    explicit TriangleList(Index pointCount) : table(2 * pointCount) {}

    /// Entry (j, t) of the vertex table.
    [[nodiscard]] Index Vertex(int j, Index t) const { return table[t].Vertex(j); }
    /// Entry (j, t) of the neighbour table.
    [[nodiscard]] Index Neighbour(int j, Index t) const { return table[t].Neighbour(j); }
};

} // namespace terravo
