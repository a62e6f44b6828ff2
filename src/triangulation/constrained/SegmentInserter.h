// Segments between two points of a mesh, made edges of it.
//
// Data: an ExactMesh; the edges that a segment crosses, in their order along it. Method: at the end
// where it begins the segment runs along an edge or leaves between two of them; from there it is
// followed from triangle to triangle until a point lies on it. The crossed edges are swapped where
// the two triangles make a convex quadrilateral, the others wait, and where that takes too many
// swaps the triangles on both sides are made anew; then the edges that came into being are swapped
// until every circle is empty but for what lies beyond a constrained edge. Edges are kept by their
// ends, since a swap moves them from triangle to triangle.
#pragma once

#include "triangulation/constrained/CavityFill.h"
#include "triangulation/exact/ExactMesh.h"

#include <deque>
#include <vector>

namespace terravo {

/// The edge that precedes j around a triangle.
constexpr int PreviousEdge(int j) {
    return j == 1 ? 3 : j - 1;
}

class SegmentInserter {
public:
    explicit SegmentInserter(ExactMesh& mesh) : mesh_(mesh) {}

    enum class Way { Edge, Across, None };

    /// What a segment meets first.
    struct Start {
        Way way = Way::None; // None: the other end is no point of the mesh
        TriangleEdge edge;   // along which it runs, or which it crosses
        Index to = 0;        // the end of the edge along which it runs
    };

    /// An edge that a segment crosses.
    struct Crossed {
        Index right = 0;
        Index left = 0;
        Index triangle = 0; // on the side from which the segment comes, when it was found
    };

    /// How an edge is made: by swaps as long as they are few, or whatever their number.
    enum class Road { Shortest, SwapsAlone };

    /// @param from, to  two different points of the mesh.
    [[nodiscard]] Start Leave(Index from, Index to) const;

    /// Follows a segment until a point lies on it.
    /// @param first  as Leave gave it, with Way::Across.
    /// @param visit  is told of each crossed edge, with its ends and its place, and says whether to
    ///               go on.
    /// @return the point, or 0 when `visit` said no.
    template <class Visit>
    Index Follow(Index from, Index to, TriangleEdge first, Visit visit) const {
        TriangleEdge edge = first;
        for (;;) {
            const Triangle& triangle = Triangles().table[edge.triangle];
            const Crossed crossed{triangle.Vertex(edge.edge), triangle.Vertex(NextEdge(edge.edge)),
                                  edge.triangle};
            if (!visit(crossed, edge)) {
                return 0;
            }
            const TriangleEdge across = mesh_.Across(edge);
            const Index ahead =
                Triangles().table[across.triangle].Vertex(PreviousEdge(across.edge));
            const int side = ahead == to ? 0 : mesh_.Turn(from, to, ahead);
            if (side == 0) {
                return ahead;
            }
            edge = {across.triangle, side > 0 ? NextEdge(across.edge) : PreviousEdge(across.edge)};
        }
    }

    /// Makes from -> to an edge and constrains it.
    /// @param crossed  all edges that it crosses, none of them constrained; at least one.
    void MakeEdge(Index from, Index to, const std::vector<Crossed>& crossed,
                  Road road = Road::Shortest);

    /// @return the edge between two points, in one of its triangles; triangle 0 when there is none.
    [[nodiscard]] TriangleEdge FindEdge(Index p, Index q) const;

    void Constrain(TriangleEdge edge) { mesh_.Constrain(edge); }
    [[nodiscard]] bool IsConstrained(TriangleEdge edge) const { return mesh_.IsConstrained(edge); }
    [[nodiscard]] TriangleEdge Across(TriangleEdge edge) const { return mesh_.Across(edge); }
    [[nodiscard]] bool IsHullEdge(TriangleEdge edge) const {
        return Triangles().Neighbour(edge.edge, edge.triangle) < 0;
    }
    [[nodiscard]] bool IsOnHull(Index point) const { return mesh_.hullInto_[point] != 0; }

    /// Where a walk along the hull may begin.
    [[nodiscard]] TriangleEdge AnyHullEdge() const;

    /// Lets swaps have an edge again that was constrained.
    void Release(Index p, Index q);

    /// Takes a point out; its triangles leave slots whose corners are all 0, which the count of the
    /// triangles still includes. What remains is what the other points alone would have made.
    /// @return false where that cannot be done: an edge of it is constrained, it has very many
    ///         edges, or nothing but a line would remain. Only the last may have changed the mesh.
    bool Remove(Index point);

    /// Notes the triangles that swaps and removals write from now on, in any order and more than
    /// once; null: no longer.
    void NoteWrittenIn(std::vector<Index>* list) { written_ = list; }

    /// Finds a position that need not be a point.
    [[nodiscard]] MeshPlace Locate(PlanPoint position, Index startTriangle);
    /// The point that lies nearest; that is certain where no edge is constrained.
    /// @param place  where the position lies.
    [[nodiscard]] Index Nearest(PlanPoint position, const MeshPlace& place) const;
    /// Adds a point at a place that is none.
    /// @return its number.
    Index Put(PlanPoint position, const MeshPlace& place);

    /// +1 when c lies to the left of a -> b, -1 to the right, 0 on the line. The positions have
    /// been located before, or are those of points.
    [[nodiscard]] int Turn(PlanPoint a, PlanPoint b, PlanPoint c) const {
        return mesh_.signs_.Turn(a, b, c);
    }
    void Admit(PlanPoint position) { mesh_.signs_.Admit(position); }

    [[nodiscard]] const TriangleList& Triangles() const { return mesh_.triangles_; }
    [[nodiscard]] const PlanPoint& Position(Index point) const { return mesh_.points_[point]; }

    /// Goes round the triangles at a point clockwise until told to stop.
    /// @param visit  gets a triangle and its edge that begins at the point, says whether to go on.
    template <class Visit>
    void AroundPoint(Index point, Visit visit) const {
        const Index begin = mesh_.hullInto_[point] != 0 ? mesh_.HullEdgeInto(point).triangle
                                                        : mesh_.triangleOf_[point];
        Index t = begin;
        do {
            const Triangle& triangle = Triangles().table[t];
            const int edge = EdgeFrom(triangle, point);
            if (!visit(t, edge)) {
                return;
            }
            t = triangle.Neighbour(edge);
        } while (t > 0 && t != begin);
    }

private:
    struct Fresh {
        Index from = 0;
        Index to = 0;
        Index triangle = 0; // one that had the edge once
    };

    [[nodiscard]] TriangleEdge FindEdge(Index p, Index q, Index hint) const;
    [[nodiscard]] bool IsConvex(TriangleEdge edge) const;
    [[nodiscard]] bool IsAhead(Index from, Index to, Index point) const;
    void Turn2(TriangleEdge edge);
    void Swap(TriangleEdge edge);
    void SwapOrWait(Index from, Index to, const Crossed& crossed);
    void Restore();
    void CollectCavity(Index from, Index to, CavitySide& left, CavitySide& right,
                       std::vector<Index>& places) const;
    [[nodiscard]] std::vector<Index> Star(Index point, bool& hasConstrained) const;
    [[nodiscard]] std::size_t FindEar(Index point, const std::vector<Index>& star) const;
    void CutEar(Index point, std::vector<Index>& star, std::size_t ear);
    void CloseOver(Index point, const std::vector<Index>& star);
    bool DropFromHull(Index point, const std::vector<Index>& star);
    void Forget(Index point, const std::vector<Index>& gone, Index stillThere);
    [[nodiscard]] Index LastCrossed(Index to, Index left, Index right) const;
    bool FillCavity(Index from, Index to);
    void WriteSide(const CavitySide& side, const std::vector<Index>& places, std::size_t first,
                   Index across, std::vector<TriangleEdge>& banks);

    ExactMesh& mesh_;
    std::deque<Crossed> queue_;
    std::vector<Fresh> fresh_;
    std::vector<Index>* written_ = nullptr;
    mutable Index hullPoint_ = 1;
};

} // namespace terravo
