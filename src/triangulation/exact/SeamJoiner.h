// Two triangulations that a line parts, made one.
//
// Data: a mesh in which two places of work have made a triangulation each; the slots that hold no
// triangle. Method: the two lines that touch both hulls from outside bound the gap. An edge across
// it rises from the lower of them to the upper. At each of its ends the edge that leads on upwards
// offers its far end; the triangle behind that edge is taken away while the circle through the
// rising edge and the offer holds the triangle's third corner. The better of the two offers makes a
// triangle, whose new side is the next rising edge. Ties are settled as in an insertion, so the
// result is what inserting all points into one triangulation would have made.
#pragma once

#include "triangulation/exact/ExactMesh.h"

#include <map>
#include <utility>
#include <vector>

namespace terravo {

class SeamJoiner {
public:
    /// @param freeSlots  for the triangles that a join makes; gets those that it takes away.
    SeamJoiner(ExactMesh& mesh, std::vector<Index>& freeSlots)
        : mesh_(mesh), freeSlots_(freeSlots) {}

    /// Joins two triangulations; with the line that parts them upright:
    /// @param left   the hull point of the one on the left that comes last towards the right.
    /// @param right  the hull point of the one on the right that comes first.
    void Join(Index left, Index right);

private:
    // An edge with the gap on its right.
    struct Bank {
        Index from = 0;
        Index to = 0;
        Index outer = 0; // the triangle on its left, or the link of a hull edge
    };
    using Chain = std::vector<Bank>; // from the upper end to the lower, which is dealt with first

    struct Ends {
        Index left = 0;
        Index right = 0;
    };
    [[nodiscard]] Index LinkFrom(Index hullPoint) const;
    [[nodiscard]] Index PointAfter(Index hullPoint) const;
    [[nodiscard]] Index PointBefore(Index hullPoint) const;
    [[nodiscard]] Ends LowerTangent(Ends ends) const;
    [[nodiscard]] Ends UpperTangent(Ends ends) const;
    void MakeChains(Ends nearest, Ends lower, Ends upper);
    [[nodiscard]] bool IsAbove(Index point) const;
    [[nodiscard]] bool IsBare(const Bank& bank) const;
    [[nodiscard]] Index ThirdCorner(const Bank& bank) const;
    void ErodeLeft();
    void ErodeRight();
    [[nodiscard]] bool Rise();
    [[nodiscard]] std::array<Bank, 2> TakeAway(Chain& chain, Index third);
    void Fill(Index corner, Chain& chain, int bankEdge);
    void Moor(TriangleEdge edge, const Bank& bank);
    void RelinkHull();

    ExactMesh& mesh_;
    std::vector<Index>& freeSlots_;
    Chain left_;
    Chain right_;
    // Edges with the gap on both sides, by the lower number of a point and the higher, and the new
    // triangle on one side.
    std::map<std::pair<Index, Index>, Index> bare_;
    Ends ends_;                       // of the rising edge
    TriangleEdge lowerSide_;          // the triangle beneath the rising edge, 0 at the lowest
    std::vector<TriangleEdge> moved_; // hull edges that are new or in another triangle than before
};

} // namespace terravo
