// Rings round connected ground, made of its edges.
//
// Data: for each piece of ground the ring round it and the rings of its holes, as numbers of edges.
// Method: where several edges meet, an edge goes on with the one that is next on the side of the
// ground, so that a walk goes along one piece of ground and never crosses itself. A walk that comes
// to a place again is divided there: one of its parts may go round ground, the others go round
// holes. Two walks along the same piece of ground have no place in common. So a piece has one walk
// round it, whose holes are known, and walks that are holes by themselves: those belong to what is
// met first to their left, by a sweep from bottom to top.
#pragma once

#include "contour/GroundEdges.h"

#include <cstddef>
#include <span>
#include <vector>

namespace terravo {

/// Edges that follow each other, the last one back to the first; none of their places comes twice.
struct GroundRing {
    std::size_t first = 0; // in GroundRings::edges
    std::size_t count = 0; // 3 at least
};

/// A connected piece of ground.
struct GroundPiece {
    GroundRing outer; // counter-clockwise
    std::vector<GroundRing> holes;
};

struct GroundRings {
    std::vector<Index> edges; // numbers
    std::vector<GroundPiece> pieces;

    [[nodiscard]] std::span<const Index> EdgesOf(const GroundRing& ring) const {
        return std::span(edges).subspan(ring.first, ring.count);
    }
};

/// Joins all edges to rings. Rings no wider than the last digits of their coordinates are left out,
/// and so are holes in no ground, which only rounding can make.
GroundRings MakeGroundRings(const GroundEdges& edges);

} // namespace terravo
