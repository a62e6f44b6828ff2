// What shapes a surface beside its points, and what is to be told of it.
//
// Data: breaklines, rings, held sides, the longest side, tolerances; remarks that name the line,
// the place and the heights. Method: plain values. Lines of one kind are counted from 0 in the
// order in which they were given; where two cannot both stand, the earlier one does.
#pragma once

#include "triangulation/SpaceLine.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace terravo {

/// What a line is to the surface, in the order in which the kinds are laid in.
enum class LineRole : unsigned char {
    Breakline,
    Boundary, // rings: what lies inside an odd number of them belongs to the surface
    Hole,     // rings: what lies inside an odd number of them does not
    HeldSide,
};

/// A side between two corners of the surface that is there, whatever the triangulation would
/// choose.
struct HeldSide {
    PlanPoint from; // the very places of the corners
    PlanPoint to;

    bool operator==(const HeldSide&) const = default;
};

/// What becomes of two lines with heights that cross.
struct CrossingRule {
    /// Heights that differ no more than this, data units, meet in their mean.
    double tolerance = 0.05;
    /// Where they differ more, the later line takes the height of the earlier one; else it is left
    /// out whole.
    bool earlierWins = false;

    bool operator==(const CrossingRule&) const = default;
};

struct SurfaceConstraints {
    std::vector<SpaceLine> breaklines; // with heights, or without any: on the surface as it is
    std::vector<SpaceLine> boundary;   // closed; with heights they are breaklines too
    std::vector<SpaceLine> holes;      // likewise
    std::vector<HeldSide> held;
    std::optional<double> longestSide; // data units; triangles at the rim with a longer outer side
                                       // are hidden
    CrossingRule crossings;
    /// A vertex that lies no farther than this from a point is that point, data units.
    double vertexTolerance = 0.001;

    [[nodiscard]] bool IsEmpty() const {
        return breaklines.empty() && boundary.empty() && holes.empty() && held.empty() &&
               !longestSide;
    }
};

enum class SurfaceRemarkKind : unsigned char {
    OtherHeight,     // a vertex is a survey point (`point`), which has another height and keeps it
    OffPoint,        // a side goes through a survey point (`point`) that has another height
    HeightsMet,      // a crossing with a difference within the tolerance: the mean was taken
    HeightTaken,     // a crossing with a larger one: the earlier line's height was taken
    RefusedCrossing, // the line is left out, since it crosses an earlier one at another height
    NotFinished,     // the line is left out, since rounding leads its crossings nowhere
    TooShort,        // the line is left out: fewer than two places, a ring of fewer than three
    CrossesItself,   // the ring is left out
    Clipped,         // part of the breakline lies where the surface is hidden
    Outside,         // all of it does; or the hole lies beside the hull
    LostSide,        // the held side is left out: an end is no corner, or a line stands in its way
};

struct SurfaceRemark {
    SurfaceRemarkKind kind = SurfaceRemarkKind::OtherHeight;
    LineRole role = LineRole::Breakline;
    std::size_t line = 0;              // among those of its role
    SpacePoint place;                  // with the height of this line, where there is one
    double otherHeight = kNoHeight;    // of the point or of the other line
    Index point = 0;                   // number of a survey point, or 0
    std::optional<LineRole> otherRole; // of the line that is crossed, where it is known
    std::size_t otherLine = 0;

    bool operator==(const SurfaceRemark&) const = default;
};

} // namespace terravo
