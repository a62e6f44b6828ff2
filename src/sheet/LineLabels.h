// Where the values along contour lines stand.
//
// Data: lines on the paper, those that get a value and those that only are in the way; the result
// names, for every value, its line, its place and angle and the stretch of the line beneath it.
// Method: every line is walked in steps of a quarter of a capital, and every place is given a cost:
// how far the line bends away from the text, how much of other lines the text would cover, how
// upright it stands, how near the end of the line is; places in a row up the slope with values of
// neighbouring lines cost less. First each line gets its cheapest place, those with the least
// choice first, whatever it costs; then values are repeated where that is not ugly.
#pragma once

#include "sheet/SheetScene.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace terravo {

/// A line on the paper.
struct LabelLine {
    std::span<const SheetPoint> points; // a closed one does not repeat its first point
    bool closed = false;
    std::uint32_t text = 0; // its value, counted from 0 in the widths; of lines to be labelled
    /// Whoever travels along the points, seen on the paper, has the higher ground on the left.
    bool higherOnLeft = true;
};

struct LabelWish {
    double height = 2;   // of a capital letter, mm, more than 0
    double spacing = 80; // along the line from value to value, mm; 0: each line gets one
    bool uphill = false; // tops uphill; else never upside down
    double gap = 0.8;    // of the line left free on each side of a text, mm
};

/// A text along a line.
struct LineLabel {
    std::size_t line = 0; // counted from 0
    /// The stretch of the line to be left out, in millimetres along it from its first point:
    /// 0 <= from < to, and to - from is less than the length. On a closed line `to` may lie beyond
    /// the length: the stretch then runs over the first point.
    double from = 0;
    double to = 0;
    SheetPoint middle; // of width and capital height
    /// Radians, counter-clockwise as seen on the paper: (-pi/2, pi/2], or with the tops uphill
    /// (-pi, pi].
    double angle = 0;
};

struct LabelPlacement {
    std::vector<LineLabel> labels; // by line, then along the line
    LabelReport report;
};

/// Places the values of lines: at least one for every line longer than three times its text's
/// width wherever there is room, repeated at about the wished spacing. The texts lie inside the
/// frame, and neither over each other nor over what is taken. Lines may leave the frame, but the
/// time grows with all of their length on the paper.
/// @param textWidths  mm, of texts as they are drawn.
/// @param taken       where no text may be.
/// @param others      lines that are drawn without a value, which texts keep clear of.
LabelPlacement PlaceLineLabels(std::span<const LabelLine> lines, std::span<const double> textWidths,
                               const SheetBox& frame, std::span<const SheetBox> taken,
                               const LabelWish& wish, std::span<const LabelLine> others);

} // namespace terravo
