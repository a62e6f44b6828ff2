// The triangles that a segment crosses, made anew on both sides of it.
//
// Data: on each side of the segment the chain of corners from one of its ends to the other, with
// what lies beyond each step of it. Method: the corners of a chain are triangulated by themselves
// and its steps made edges; the triangles between the chain and the segment take the place of the
// old ones. Where the chains bulge towards the segment, swaps would take the square of their
// number.
#pragma once

#include "triangulation/exact/ExactMesh.h"

#include <vector>

namespace terravo {

/// One side of a segment, which lies on the right of the edge from the first corner to the last.
struct CavitySide {
    /// A step from a corner to the next.
    struct Bank {
        Index outer = 0; // the neighbour entry of the edge in the old triangle
        bool isConstrained = false;
    };
    /// A triangle (from, to, apex), as places in the chain, from 0.
    struct Planned {
        std::size_t from = 0;
        std::size_t to = 0;
        std::size_t apex = 0;
        std::size_t parent = 0; // number of the triangle beneath; that of the first is itself
        int parentEdge = 0;
    };

    std::vector<Index> corners; // from one end to the other
    std::vector<Bank> banks;    // one fewer
    std::vector<Planned> plan;  // parents first

    /// @return false when a corner comes twice: the chain then leads out to it and back.
    [[nodiscard]] bool Plan(const ExactMesh& mesh);

private:
    class OwnMesh;
};

} // namespace terravo
