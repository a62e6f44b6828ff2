// Inserts one point after another into a triangulation.
//
// Data: the tables of a Workspace. Method: the triangles about the new point become a fan, which is
// written with all its links at once; then the edges about it are swapped where they must be.
#pragma once

#include "triangulation/MeshEdit.h"

#include <span>
#include <vector>

namespace terravo::modDelaunay2D {

/// One triangle of the fan about a new point m: (m, from, to), written to the given slot of the
/// table.
struct Spoke {
    Index slot = 0;
    Index from = 0;
    Index to = 0;
    Index outer = 0; // the neighbour entry of its edge from -> to
};

/// Keeps the buffer for the hull edges that a point sees.
class Inserter {
public:
    explicit Inserter(Workspace& work) : work_(work) {}

    /// Makes the triangles about point m and puts them on the stack, for SwapEdges.
    /// @param place  where a walk has found the point; a repeat (location 4 to 6) is left out.
    /// @return kDone, kStackFull or a fault.
    Index MakeFan(Index m, const WalkResult& place);

private:
    enum class Ring { Closed, Open };

    Index SplitInside(Index m, Index t);
    Index SplitOnEdge(Index m, Index t, int edge);
    Index SplitOnHullEdge(Index m, Index t, int edge);
    Index JoinFromOutside(Index m, TriangleEdge seen);
    Index WriteFan(Index m, std::span<const Spoke> spokes, Ring ring, Index linkAfter = 0);
    Index AddSlots(Index number);

    Workspace& work_;
    std::vector<Spoke> visible_;
};

} // namespace terravo::modDelaunay2D
