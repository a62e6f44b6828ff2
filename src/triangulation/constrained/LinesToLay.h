// The lines of a surface in the order in which they are laid in, and those whose shape forbids it.
//
// Data: breaklines, boundary and holes with heights, then the same without; of each the vertices
// with a height each, or with none. Method: a vertex without a height among others that have one
// gets it from its neighbours along the line. Rings are searched for sides that cross.
#pragma once

#include "triangulation/constrained/SurfaceConstraints.h"

#include <cstdint>
#include <vector>

namespace terravo {

struct LineToLay {
    LineRole role = LineRole::Breakline;
    std::size_t number = 0; // among those of its role, from 0
    bool isClosed = false;
    bool isDraped = false; // it has no heights and lies on the surface as it is
    std::vector<SpacePoint> vertices;

    [[nodiscard]] std::size_t SideCount() const {
        return isClosed ? vertices.size() : vertices.size() - 1;
    }
    [[nodiscard]] const SpacePoint& EndOfSide(std::size_t side) const {
        return vertices[side + 1 == vertices.size() ? 0 : side + 1];
    }
};

struct LinesToLay {
    std::vector<LineToLay> lines;
    std::vector<SurfaceRemark> refused; // those that are left out for their shape
};

LinesToLay PrepareLines(const SurfaceConstraints& constraints);

} // namespace terravo
