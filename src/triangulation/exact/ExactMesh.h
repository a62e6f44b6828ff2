// A triangulation that points are put into, with exact signs and a rule for ties.
//
// Data: the points in the order of their numbers here, each with its rank; a TriangleList; for each
// point a triangle that has it as a corner, and the hull edge that ends at it; for each triangle a
// mark that tells which of its edges are constrained. Method: a point is found by a walk; the
// triangles about it become a fan, which is written with all its links at once; then each edge
// opposite the point whose circle holds the point across is swapped. Where four points lie exactly
// on one circle, of the two diagonals the one that ends at the point of the highest rank gives way.
// With exact signs that makes the triangulation a function of the points and their ranks, whatever
// the order in which they come.
//
// Links are written in one order: all triangles first, then the links back from inner neighbours,
// then for all hull edges that moved the place of their end, and last the links from their
// predecessors. Any other order breaks the ring when two neighbouring hull edges move together.
#pragma once

#include "triangulation/exact/ExactSigns.h"

#include <array>
#include <cstdint>
#include <vector>

namespace terravo {

/// Where a plan position lies in a triangulation.
struct MeshPlace {
    Index triangle = 0;
    int location =
        0; // 0 inside; 1..3 on that edge; 4..6 at vertex 1..3; -1..-3 beyond that hull edge
};

/// Edge of a triangle that starts at one of its corners.
inline int EdgeFrom(const Triangle& triangle, Index corner) {
    return triangle.vertices[0] == corner ? 1 : triangle.vertices[1] == corner ? 2 : 3;
}

class ExactMesh {
public:
    using Mark = std::uint8_t; // bit j - 1: edge j is constrained

    /// A place of work: the slots for triangles that it takes one after the other, and what an
    /// insertion leaves for the next. Several may be at work on one mesh at the same time, each on
    /// points and slots of its own.
    class Site {
    public:
        /// @param slotsBefore  the first triangle goes into the slot after these.
        explicit Site(Index slotsBefore = 0) : lastUsed_(slotsBefore) {}

        [[nodiscard]] Index LastUsed() const { return lastUsed_; }
        /// Steps of walks and swaps so far: in some orders one point takes as many swaps as there
        /// are points.
        [[nodiscard]] std::int64_t Effort() const { return effort_; }

    private:
        friend class ExactMesh;

        // One triangle of the fan about a new point m: (m, from, to).
        struct Spoke {
            Index slot = 0;
            Index from = 0;
            Index to = 0;
            Index outer = 0; // neighbour entry of its edge from -> to
            std::uint8_t mark = 0;
        };

        Index lastUsed_ = 0; // slot
        Index walkFrom_ = 0;
        std::int64_t effort_ = 0;
        std::uint32_t random_ = 1;
        std::vector<Spoke> fan_;
        std::vector<Index>
            stack_; // triangles with the new point as vertex 1, whose edge 2 is to be tested
    };

    /// @param points  distinct or not, all within reach; only those that are put in count.
    /// @param ranks   of point i at i: the numbers that settle ties.
    ExactMesh(Array1<PlanPoint> points, Array1<Index> ranks);

    /// Goes on from a triangulation that is there, whatever made it, as long as every triangle
    /// turns left and the hull is convex.
    /// @param points     1..N, of which the triangles need not have all.
    /// @param triangles  of the points; slots beyond its count are taken by what is put in.
    ExactMesh(Array1<PlanPoint> points, Array1<Index> ranks, TriangleList triangles);

    /// Adds a point to those that can be put in.
    /// @return its number.
    Index Append(PlanPoint position, Index rank);

    /// Makes the first triangle of a site, of three points that are not on one line.
    void Begin(Site& site, Index a, Index b, Index c);

    /// Puts a point in. One at the place of an earlier one is left out.
    void Insert(Site& site, Index point);

    /// The same at the mesh's own place of work, where there is no other.
    void Begin(Index a, Index b, Index c) {
        Begin(site_, a, b, c);
        triangles_.count = site_.LastUsed();
    }
    void Insert(Index point) {
        Insert(site_, point);
        triangles_.count = site_.LastUsed();
    }

    /// Makes triangles 1..count of what the sites have made, and moves the last into the gaps.
    /// @param freeSlots  that hold none, of the slots 1..2 N.
    void CloseGaps(std::vector<Index> freeSlots);

    /// +1 when c lies to the left of a -> b, -1 to the right, 0 on the line.
    [[nodiscard]] int Turn(Index a, Index b, Index c) const {
        return signs_.Turn(points_[a], points_[b], points_[c]);
    }

    /// Finds a plan position by a walk from a triangle.
    [[nodiscard]] MeshPlace Locate(Site& site, PlanPoint position, Index start) const;

    /// A constrained edge is never swapped; a point on it divides it in two.
    void Constrain(TriangleEdge edge);
    [[nodiscard]] bool IsConstrained(TriangleEdge edge) const {
        return (marks_[edge.triangle] & EdgeBit(edge.edge)) != 0;
    }

    /// A triangle that is there, near the last point that was put in or taken out.
    [[nodiscard]] Index AnyTriangle() const { return site_.walkFrom_; }
    /// A triangle with the point as a corner; 0 when the point is not in.
    [[nodiscard]] Index TriangleAt(Index point) const { return triangleOf_[point]; }
    [[nodiscard]] const PlanPoint& Position(Index point) const { return points_[point]; }
    [[nodiscard]] Index PointCount() const { return points_.UpperBound(); }

    [[nodiscard]] const TriangleList& Triangles() const { return triangles_; }
    /// Of triangle t at t; there may be more of them than triangles.
    [[nodiscard]] const Array1<Mark>& Marks() const { return marks_; }
    /// Hands the triangles out; the mesh is then empty.
    [[nodiscard]] TriangleList TakeTriangles() { return std::move(triangles_); }

private:
    friend class SeamJoiner;
    friend class SegmentInserter;

    enum class Ring { Closed, Open };

    void BeginWalksAt(Index triangle) { site_.walkFrom_ = triangle; }
    static constexpr unsigned EdgeBit(int edge) { return 1U << static_cast<unsigned>(edge - 1); }
    // The bit of one edge in an old mark, as that of another edge in a new one.
    [[nodiscard]] static Mark Moved(Mark mark, int from, int to) {
        return static_cast<Mark>((mark & EdgeBit(from)) != 0 ? EdgeBit(to) : 0U);
    }
    [[nodiscard]] TriangleEdge Across(TriangleEdge edge) const;
    void SetConstrained(TriangleEdge edge);

    int FirstEdge(Site& site, int crossed) const;
    [[nodiscard]] bool GivesWay(Index b, Index c, Index m, Index d) const;
    Index NewTriangle(Site& site);
    void PutAt(Site& site, Index point, const MeshPlace& place);
    void SplitInside(Site& site, Index m, Index t);
    void SplitOnEdge(Site& site, Index m, Index t, int edge);
    void JoinFromOutside(Site& site, Index m, TriangleEdge seen);
    [[nodiscard]] bool IsSeen(Index m, TriangleEdge edge) const;
    void WriteFan(Site& site, Index m, Ring ring, Index linkAfter);
    void SwapAbout(Site& site);
    void Move(Index from, Index to);
    void Swap(Index t, Index u, int shared);
    void SwapForOthers(Index t, Index u, int shared);
    void Relink(TriangleEdge moved);
    void NoteHullEdge(TriangleEdge moved);
    void LinkPredecessor(TriangleEdge moved);
    [[nodiscard]] TriangleEdge HullEdgeInto(Index point) const {
        return HullEdgeFromLink(hullInto_[point]);
    }

    Array1<PlanPoint> points_;
    Array1<Index> ranks_;
    ExactSigns signs_;
    TriangleList triangles_;
    Array1<Index> triangleOf_; // of point i: a triangle with it as a corner, 0 when it is not in
    Array1<Index> hullInto_;   // of point i: the link to the hull edge that ends there
    Array1<Mark> marks_;
    bool hasConstraints_ = false;
    Site site_;
};

} // namespace terravo
