// Contour lines without corners that still cannot cross.
//
// Data: for each level its lines as chains of cubic pieces, one a triangle, and how far their
// height on the surface is from the level. Method: each vertex of a contour may move along its
// triangle edge within an interval whose heights are nearer to its level than to any other; between
// two edges the line stays in the convex quadrilateral of their intervals. Such quadrilaterals of
// two levels, or of one level in two triangles, have nothing in common but a shared interval, so
// lines neither cross nor touch wherever the vertices come to lie. See docs/contours.md.
#pragma once

#include "contour/ContourSet.h"
#include "triangulation/constrained/ConstrainedSurface.h"
#include "util/StopToken.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <vector>

namespace terravo {

/// Where a vertex would lie if nothing held it.
enum class SmoothingGoal {
    Plain,  // where the straight edge has the height of the level
    Surface // where a curved surface through the points has it: for exact heights of smooth terrain
};

inline constexpr double kLeastFraction = 0.01;
inline constexpr double kMostFraction = 0.45;

struct SmoothingOptions {
    /// How far a line may leave its height, as a part of the way to the neighbouring level. More
    /// makes rounder lines. Taken as one of the bounds above where it is beyond.
    double fraction = 0.25;
    /// How long a stretch is made even, in edges: 0 leaves the vertices at the goal, 0.5 suits the
    /// plain goal, 0.4 that of the surface, 1 noise or terraces.
    double smoothness = 0.5;
    SmoothingGoal goal = SmoothingGoal::Plain;
    /// No line leaves its height by more, data units; taken as a billionth of the range of heights
    /// at least.
    double limit = std::numeric_limits<double>::infinity();
    /// On a constrained edge between two triangles a line has its vertex where it has it without
    /// smoothing, and a corner if need be. Else such edges are as any other.
    bool keepCornersOnBreaklines = true;

    bool operator==(const SmoothingOptions&) const = default;
};

/// What is smoothed. Everything outlives the call only.
struct SmoothingSource {
    const PointSet& points;
    const TriangleList& triangles; // the visible ones: lines end where there is no neighbour
    const EdgeMarks* constrained = nullptr; // of these triangles; null: none
    const LevelSet& levels;
};

/// A chain of pieces; the pieces join in the vertices, without a corner but on breaklines.
struct SmoothLine {
    std::size_t firstVertex = 0;  // in SmoothLevel::edges
    std::size_t firstControl = 0; // in SmoothLevel::controls
    std::size_t pieces = 0;       // 1 at least; 3 at least when closed
    bool closed = false;          // the last vertex is in the place of the first
};

/// The lines of one level, higher ground on the left: the open ones, then the closed ones, in the
/// order of a ContourSet with its repeats.
struct SmoothLevel {
    double value = 0; // height
    /// Relative to SmoothSet::origin. Of each line 3 * pieces + 1: piece i has the four from 3 * i
    /// on, the vertices are every third one.
    std::vector<PlanPoint> controls;
    /// The edge of each vertex, as in a ContourVertex: of the triangle of the piece before it, at
    /// the beginning of an open line of the piece after it. Of each line pieces + 1.
    std::vector<TriangleEdge> edges;
    std::vector<SmoothLine> lines;

    [[nodiscard]] std::span<const PlanPoint> ControlsOf(const SmoothLine& line) const {
        return std::span(controls).subspan(line.firstControl, 3 * line.pieces + 1);
    }
    [[nodiscard]] std::span<const TriangleEdge> EdgesOf(const SmoothLine& line) const {
        return std::span(edges).subspan(line.firstVertex, line.pieces + 1);
    }
};

/// How far lines leave their height, over all places of all pieces.
struct SmoothError {
    double height = 0;   // data units
    double interval = 0; // as a part of the way to the neighbouring level on that side
};

struct SmoothSet {
    /// To be added to every place: coordinates of a national grid leave too few digits for the
    /// curves.
    PlanPoint origin;
    Array1<SmoothLevel> levels; // one a level, in the order of the levels
    SmoothError worst;
    std::size_t vertices = 0; // of all lines; a closed line has as many as pieces
};

/// Makes smooth lines of every level, the levels on several threads; the result does not depend on
/// their number. A level repeated has its lines once, at its first place. Peaks and ridges exactly
/// at a level: a peak is left out, a ridge is a thin closed line round it. Levels that are nearer
/// to a neighbour than a millionth of the range of heights have straight pieces.
/// @param source  heights finite, and the difference of any two.
/// @param stop    stages "contour" and "smooth", told on the calling thread.
/// @return nothing when it was stopped.
std::optional<SmoothSet> MakeSmoothContours(const SmoothingSource& source,
                                            const SmoothingOptions& options,
                                            const StopToken& stop = StopToken());

} // namespace terravo
