// Lines on their way into a mesh.
//
// Data: the mesh with the heights of its points; the pieces of its constrained edges; remarks and
// the lines that have to be left out. Method: a side of a line is followed from point to point.
// Where nothing stands in its way it becomes an edge; it is led through points that lie within the
// vertex tolerance of it; a constrained edge in its way is divided where the two cross, and its
// parts are laid anew, since a rounded crossing lies on neither line. A budget ends the work where
// rounding makes ever new crossings of nearly parallel lines.
#pragma once

#include "triangulation/constrained/EdgePieces.h"
#include "triangulation/constrained/LinesToLay.h"
#include "triangulation/constrained/PointGrid.h"
#include "triangulation/constrained/SegmentInserter.h"

#include <array>
#include <utility>
#include <vector>

namespace terravo {

/// A side of a line as it was given, with the heights that its ends have on the surface.
struct GivenSide {
    PlanPoint from;
    PlanPoint to;
    double fromHeight = 0;
    double toHeight = 0;

    /// 0 at its beginning, 1 at its end.
    [[nodiscard]] double PartAt(PlanPoint place) const;
    [[nodiscard]] double HeightAt(PlanPoint place) const;
    [[nodiscard]] double DistanceTo(PlanPoint place) const;
};

class ConstraintLayer {
public:
    enum class Result { Laid, Refused, Unfinished };

    /// @param heights  of the points of the mesh.
    /// @param lines    numbers of lines are places in it; held sides come behind.
    ConstraintLayer(ExactMesh& mesh, std::vector<double> heights,
                    const std::vector<LineToLay>& lines, const SurfaceConstraints& constraints);

    /// Puts the vertices of a line with heights into the mesh.
    void PutVertices(LineNumber line);

    /// Lays a line with heights, of which the vertices are in.
    /// @return Refused: nothing of it is laid. Unfinished: a part may be, all must begin anew.
    Result LayWithHeights(LineNumber line);

    /// Lays a line on the surface as it is.
    Result Drape(LineNumber line);

    /// Leads rings that leave the hull to the hull as it is now.
    void ReachHull();

    /// Leaves a line out whose edges have been bent away from where it was given, which the
    /// crossings of nearly parallel lines can do, each by a little.
    void RefuseIfBentAway(LineNumber line);

    /// @param held  number among the held sides.
    Result Hold(std::size_t held);

    /// Pieces of a line, in its order; of a held side too.
    [[nodiscard]] const PieceChain& ChainOf(LineNumber line) const { return chains_[line]; }
    [[nodiscard]] const EdgePieces& Pieces() const { return pieces_; }
    [[nodiscard]] const SegmentInserter& Inserter() const { return inserter_; }
    [[nodiscard]] bool ReachesOutside(LineNumber line) const { return reachesOutside_[line]; }
    [[nodiscard]] Index SurveyPoints() const { return surveyPoints_; }
    [[nodiscard]] double Height(Index point) const {
        return heights_[static_cast<std::size_t>(point) - 1];
    }
    [[nodiscard]] std::int64_t Crossings() const { return crossings_; }

    std::vector<SurfaceRemark> remarks;
    /// Why lines are left out, one remark a line; the line that is being laid, or one of those that
    /// follow.
    std::vector<std::pair<LineNumber, SurfaceRemark>> refused;

private:
    struct Course { // of a side that is being laid
        GivenSide given;
        LineNumber line = kNoLine;
        int depth = 0; // 0: a side of a line, else a part of an edge that is laid anew
    };
    struct LaidSide {
        PlanPoint from;
        PlanPoint to;
        std::size_t end = 0; // of its pieces in the chain of the line
    };
    struct Outlet { // where a line leaves the hull
        LineNumber line = kNoLine;
        Index point = 0;
        PlanPoint outside;
    };
    enum class Meeting { Agree, Taken, Refused };

    [[nodiscard]] Index StartNear(PlanPoint place) const;
    [[nodiscard]] bool IsWithin(double distance) const {
        return distance <= constraints_.vertexTolerance;
    }
    [[nodiscard]] bool IsNear(Index point, PlanPoint place) const;
    [[nodiscard]] SurfaceRemark RemarkOn(SurfaceRemarkKind kind, LineNumber line, PlanPoint place,
                                         double height) const;
    void NameOther(SurfaceRemark& remark, LineNumber other) const;
    void Refuse(LineNumber line, const SurfaceRemark& remark);
    [[nodiscard]] bool IsRefused(LineNumber line) const;

    Index PutVertex(LineNumber line, const SpacePoint& vertex);
    Index PutNew(PlanPoint position, const MeshPlace& place, double height, LineNumber line);
    [[nodiscard]] bool IsBentAway(PieceNumber piece, const LaidSide& side) const;
    [[nodiscard]] GivenSide SideBetween(Index from, Index to) const;

    bool CanBeLaid(LineNumber line);
    bool CanPass(Index from, Index to, LineNumber line);
    bool CanCross(const SegmentInserter::Crossed& edge, const Course& course);
    Meeting Meet(LineNumber line, LineNumber other, PlanPoint place, double height,
                 double otherHeight, bool tells);
    bool PassThrough(Index point, const Course& course, bool tells);

    bool Lay(Index from, Index to, const Course& course, PieceChain& chain);
    bool StepAcross(Index from, const SegmentInserter::Start& start, const Course& course,
                    std::vector<Index>& goals, Index& current, PieceChain& chain);
    [[nodiscard]] Index NearAhead(const SegmentInserter::Crossed& crossed, Index from, Index goal,
                                  const Course& course) const;
    void ClaimEdge(Index p, Index q, TriangleEdge edge, LineNumber line, PieceChain& chain);
    bool Cross(Index from, Index goal, const SegmentInserter::Crossed& edge, const Course& course,
               std::vector<Index>& goals);
    [[nodiscard]] Index SnapCrossing(PlanPoint place, Index from, Index goal,
                                     const SegmentInserter::Crossed& edge);
    [[nodiscard]] static PlanPoint CrossingOf(PlanPoint a, PlanPoint b, PlanPoint c, PlanPoint d);
    Index DivideEdge(Index p, Index q, PlanPoint place, double height, int depth);
    bool DivideAt(Index p, Index q, Index point, int depth);

    Index VertexOnHull(PlanPoint position);
    Index DrapedVertex(const SpacePoint& vertex);
    bool DrapeSide(const SpacePoint& from, const SpacePoint& to, Index first, Index last,
                   LineNumber line, PieceChain& chain);
    bool DrapeBetween(Index from, Index to, LineNumber line, PieceChain& chain);
    Index DrapeAcross(Index from, Index to, TriangleEdge edge);
    std::array<Index, 2> HullCrossings(PlanPoint from, PlanPoint to);
    Index PutOnHull(Index p, Index q, PlanPoint from, PlanPoint to);
    void HoldSides(Index triangle);
    [[nodiscard]] Index CoveringHullPoint(Index point) const;
    [[nodiscard]] Index StepOut(Index from, PlanPoint outside) const;
    [[nodiscard]] double HeightIn(Index triangle, PlanPoint place) const;

    ExactMesh& mesh_;
    SegmentInserter inserter_;
    PointGrid grid_;
    const std::vector<LineToLay>& lines_;
    const SurfaceConstraints& constraints_;
    Index surveyPoints_;
    std::vector<double> heights_;             // of the points, from 0
    std::vector<LineNumber> ownerOf_;         // of the points that were added, from 0
    std::vector<std::vector<Index>> corners_; // of each line with heights
    std::vector<PieceChain> chains_;
    std::vector<std::vector<LaidSide>> sides_; // of each line
    std::vector<char> reachesOutside_;
    std::vector<char> isRefused_;
    EdgePieces pieces_;
    std::vector<Outlet> outlets_;
    std::vector<SegmentInserter::Crossed> crossed_;
    std::vector<Index> settled_; // crossings of the side being laid, whose heights have been met
    Index lastPut_ = 0;
    std::int64_t budget_ = 0;
    bool isHalfLaid_ = false; // an edge could not be laid anew
    std::int64_t crossings_ = 0;
};

} // namespace terravo
