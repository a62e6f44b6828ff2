// What texts cover of the lines beneath them.
//
// Data: lines, and the rooms of texts at any angle; the result names stretches of the lines.
// Method: a coarse grid knows the rooms; every piece of a line is cut by those in its cells.
#pragma once

#include "sheet/LineLabels.h"
#include "sheet/TurnedBox.h"

#include <span>
#include <vector>

namespace terravo {

/// A stretch of a line that is not drawn.
struct LineGap {
    std::size_t line = 0; // counted from 0
    double from = 0;      // mm along the line from its first point; 0 <= from < to <= its length
    double to = 0;
};

/// The room that a text takes on the paper.
/// @param width   of the text, mm.
/// @param height  of a capital, mm.
TurnedBox RoomOf(const LineLabel& label, double width, double height);

/// What to leave out of lines so that no text is crossed: the stretches within rooms, and those
/// that labels interrupt. By line, then along it, none touching the next; on a closed line one that
/// runs over the first point comes as two.
/// @param rooms   of all texts.
/// @param labels  of these lines; none of lines without values.
std::vector<LineGap> GapsBeneath(std::span<const LabelLine> lines, std::span<const TurnedBox> rooms,
                                 std::span<const LineLabel> labels);

} // namespace terravo
