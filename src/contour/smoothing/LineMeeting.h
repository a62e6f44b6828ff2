// Whether straight lines meet, by exact signs.
//
// Data: places, one line after another. Method: a tree of boxes over all pieces, halved at the
// middle of the longer side; where boxes of the tree overlap it is followed, down to pairs of
// pieces. Neither far points nor crowded ones make it slow; long pieces side by side do, whose
// boxes overlap.
#pragma once

#include "triangulation/TriangleList.h"
#include "util/StopToken.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace terravo {

struct StraightLines {
    struct Line {
        std::size_t first = 0; // in places
        std::size_t count = 0;
        bool closed = false;
    };
    std::vector<PlanPoint> places; // neighbours in a line differ
    /// 1 where the piece that begins at a place is not to be looked at; may be empty: all are.
    std::vector<char> isLeftOut;
    std::vector<Line> lines;
};

struct LineMeeting {
    std::size_t line = 0; // in StraightLines::lines
    std::size_t other = 0;
    PlanPoint place;         // about
    bool isCrossing = false; // else they touch
};

/// Looks for a place where two lines, or a line and itself, have anything in common but the vertex
/// that two neighbouring pieces share.
/// @param lines  coordinates within reach of ExactSigns.
/// @param stop   stage "examine".
/// @return one such place, the same one at every call; nothing when there is none, or it was
///         stopped.
std::optional<LineMeeting> FindMeeting(const StraightLines& lines,
                                       const StopToken& stop = StopToken());

} // namespace terravo
