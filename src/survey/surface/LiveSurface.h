// A surface that follows single edits at once, while everything else is still to be made anew.
//
// Data: the triangles of a survey as they were, in a mesh that can be changed; the plan that it has
// followed. Method: what a new plan says otherwise than the last one is done to the mesh, and the
// triangles written on the way are handed out, so that a picture can be mended where it has
// changed. What comes out are the triangles that the survey itself would make, since both are a
// function of the points and the lines alone; where that does not hold, or the work would not be
// small, the edit is not followed.
#pragma once

#include "survey/Survey.h"
#include "triangulation/constrained/SegmentInserter.h"

#include <array>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace terravo {

/// What an edit has changed.
struct SurfacePatch {
    PointSet points;        // the corners: those of the survey, then those that lines have added
    Index surveyed = 0;     // the number of the former
    TriangleList triangles; // the new ones, linked among each other
    EdgeMarks onLines;      // of their edges, those that lie on breaklines
    /// The triangles that were about a point that is no longer there.
    std::vector<std::array<PlanPoint, 3>> before;
};

/// The triangle at a place, as it is now.
struct TriangleHere {
    std::array<Index, 3> numbers{}; // of its corners, among all survey points; 0: added by a line
    std::array<SpacePoint, 3> corners;
    std::array<bool, 3> isConstrained{};            // edge j + 1, from corner j to the next
    std::array<std::optional<PlanPoint>, 3> beyond; // the corner across it; none at the rim
    bool holdsPlace = false; // else the place lies beside the surface and this is near it
};

class LiveSurface {
public:
    /// Begins with the surface of a survey, which has been made.
    /// @param survey  outlives this; its points stay, its plan is told to Follow.
    explicit LiveSurface(const Survey& survey);
    LiveSurface(const LiveSurface&) = delete;
    LiveSurface& operator=(const LiveSurface&) = delete;

    /// Whether the surface, which has been made, can be followed at all: with exact signs and every
    /// held side in its place.
    [[nodiscard]] static bool CanFollow(const Survey& survey);

    /// Does what a plan says otherwise than the last one.
    /// @return nothing where it cannot be followed; what is here is of no use any more then.
    [[nodiscard]] std::optional<SurfacePatch> Follow(const SurfacePlan& plan);

    /// Whether it has followed the survey to where that is now.
    [[nodiscard]] bool Holds() const {
        return revision_ == survey_.PointsRevision() && plan_ == survey_.Plan();
    }

    /// By a walk from where the last place was.
    [[nodiscard]] std::optional<TriangleHere> At(PlanPoint place);

    /// The visible triangles by the numbers of their corners among all survey points; those that
    /// lines have added are counted on. The lowest number comes first.
    [[nodiscard]] std::vector<std::array<Index, 3>> Triangles() const;

private:
    [[nodiscard]] static ExactMesh MeshOf(const Survey& survey);
    [[nodiscard]] Index InMesh(Index numberAmongAll) const;
    [[nodiscard]] Index AmongAll(Index pointOfMesh) const;
    [[nodiscard]] bool IsAdded(Index pointOfMesh) const {
        return pointOfMesh > surveyed_ && pointOfMesh <= surveyed_ + addedByLines_;
    }
    [[nodiscard]] SpacePoint CornerOf(Index pointOfMesh) const;
    [[nodiscard]] bool SharesItsPlace(Index numberAmongAll) const;
    [[nodiscard]] bool Exclude(Index numberAmongAll, SurfacePatch& patch);
    [[nodiscard]] bool Restore(Index numberAmongAll);
    [[nodiscard]] bool MayTurnLines(Index pointOfMesh) const;
    [[nodiscard]] bool Hold(const HeldSide& side);
    [[nodiscard]] bool LetGo(const HeldSide& side);
    [[nodiscard]] Index CornerAt(PlanPoint place);
    void NoteStar(Index pointOfMesh);
    [[nodiscard]] bool IsSound(Index triangle) const;
    [[nodiscard]] bool IsHeld(PlanPoint from, PlanPoint to) const;
    [[nodiscard]] EdgeMark MarkOfLines(Index triangle) const;
    [[nodiscard]] bool FillPatch(SurfacePatch& patch);

    const Survey& survey_;
    std::uint64_t revision_; // of the points
    SurfacePlan plan_;
    std::vector<Index> leftOut_; // among all, when it began; ascending
    Index surveyed_ = 0;         // points of the mesh that were in use then
    Index addedByLines_ = 0;     // the next ones
    std::vector<double> addedHeights_;
    bool hasDrapedLines_ = false;
    std::vector<Index> repeats_;                // points of the mesh that were no corners
    std::unordered_map<Index, Index> comeBack_; // of all points, those of leftOut_ that are in
    std::unordered_map<Index, Index> cameFrom_; // and the other way round
    HiddenTriangles hidden_;                    // slots of the mesh when it began
    ExactMesh mesh_;
    SegmentInserter inserter_{mesh_};
    std::vector<Index> written_;
    Index near_ = 1;
};

} // namespace terravo
