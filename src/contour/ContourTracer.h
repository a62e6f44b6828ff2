// Following the lines of a level from triangle to triangle.
//
// Data: points and triangles, and for each triangle the last level that a line was followed
// through it: one stamp is enough, since a triangle holds at most one piece of a level. Method:
// lines that begin at the edge of the surface first, then what is left, which is closed. An edge is
// met with its upper end first, seen from the triangle entered, so that higher ground is on the
// left, and left with its lower end first.
#pragma once

#include "contour/ContourLineBuilder.h"

#include <span>
#include <vector>

namespace terravo {

class ContourTracer {
public:
    /// Keeps references to both, which must not change meanwhile.
    ContourTracer(const PointSet& points, const TriangleList& triangles);

    /// Hands every line of a level to the builder, vertex by vertex.
    /// @param reached  all triangles that the level crosses, and maybe more, in the order in which
    ///                 lines are to be found.
    void Trace(double level, std::span<const Index> reached, ContourLineBuilder& lines);

private:
    [[nodiscard]] bool IsAbove(Index point) const { return points_.z[point] >= level_; }
    [[nodiscard]] bool IsUsed(Index t) const {
        return used_[static_cast<std::size_t>(t)] == round_;
    }
    [[nodiscard]] int EntryEdge(const Triangle& triangle) const;
    [[nodiscard]] TriangleEdge ExitFrom(TriangleEdge entry) const;
    void AddVertex(TriangleEdge edge, EdgeEnds ends, ContourLineBuilder& lines) const;
    void Follow(TriangleEdge entry, ContourLineBuilder& lines);

    const PointSet& points_;
    const TriangleList& triangles_;
    double level_ = 0;
    Index round_ = 0;
    std::vector<Index> used_; // round in which a line went through triangle t, at t
    std::vector<TriangleEdge> inside_;
};

} // namespace terravo
