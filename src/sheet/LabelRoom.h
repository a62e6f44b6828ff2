// What is already on the paper where a text along a line could go.
//
// Data: a fine grid with the lines, a coarse one with the boxes that texts keep out of, and one
// with the places that lie up or down the slope from a text. Method: lines are entered as samples
// a cell apart, so a cell knows about how much line runs through it; boxes stand in every cell that
// they may touch.
#pragma once

#include "sheet/PaperGrid.h"
#include "sheet/TurnedBox.h"

#include <cstdint>
#include <vector>

namespace terravo {

class LabelRoom {
public:
    /// @param frame     where texts may be, not empty.
    /// @param height    of a capital, mm.
    /// @param longest   half the length of the longest box that will be asked for, mm.
    LabelRoom(const SheetBox& frame, double height, double longest);

    /// How far samples of a line should be apart, mm.
    [[nodiscard]] double Cell() const { return cell_; }
    /// Enters one sample of a line.
    void AddInk(SheetPoint p) {
        if (std::uint8_t* ink = ink_.At(p); ink != nullptr && *ink < 255) {
            ++*ink;
        }
    }
    void Take(const TurnedBox& box);
    /// Enters a text: takes its box and offers the places up and down the slope from it.
    void TakeText(const TurnedBox& box);

    /// Whether a box lies inside the frame and touches no taken one.
    [[nodiscard]] bool IsFree(const TurnedBox& box) const;
    /// How much of other lines a text on a line would cover: 1 for a line from end to end of it on
    /// one side. The text's own line, which runs along the middle, does not count.
    /// @param most  when it is at least so much, the result is only known to be so too.
    [[nodiscard]] double InkBeside(const TurnedBox& text, double most) const;
    /// From 0, no text up or down the slope from here, to 1, a text close by.
    [[nodiscard]] double Ladder(SheetPoint p) const;

private:
    void OfferLadder(const TurnedBox& box, double side);

    SheetBox frame_;
    double height_;
    double cell_;
    PaperGrid<std::uint8_t> ink_;
    PaperGrid<std::uint8_t> ladder_;
    mutable PaperGrid<std::vector<std::uint32_t>> buckets_; // numbers of boxes
    std::vector<TurnedBox> boxes_;
};

} // namespace terravo
