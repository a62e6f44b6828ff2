// What is already on the paper where a text along a line could go.
//
// Data: a fine grid with the lines, a coarse one with the boxes that texts keep out of, and one
// with the places that lie up or down the slope from a text. Method: lines are entered as samples
// a cell apart, so a cell knows about how much line runs through it; boxes stand in every cell that
// they may touch.
#pragma once

#include "sheet/TurnedBox.h"

#include <cstdint>
#include <vector>

namespace terravo {

/// Cells of equal size over a box of the paper.
template <class T>
class PaperGrid {
public:
    PaperGrid(const SheetBox& box, double cell)
        : box_(box), perCell_(1 / cell), columns_(CellsAlong(box.Width())),
          rows_(CellsAlong(box.Height())),
          cells_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_)) {}

    /// The cell at a place; null outside the box.
    T* At(SheetPoint p) {
        const double x = (p.x - box_.left) * perCell_;
        const double y = (p.y - box_.top) * perCell_;
        return x >= 0 && y >= 0 && x < columns_ && y < rows_
                   ? &Cell(static_cast<int>(x), static_cast<int>(y))
                   : nullptr;
    }
    const T* At(SheetPoint p) const { return const_cast<PaperGrid*>(this)->At(p); }

    /// Calls use(cell) for the cells that a box touches, until one returns false.
    template <class Use>
    bool ForEachIn(const SheetBox& box, Use use) {
        for (int y = Clamped(box.top - box_.top, rows_); y <= Clamped(box.bottom - box_.top, rows_);
             ++y) {
            for (int x = Clamped(box.left - box_.left, columns_);
                 x <= Clamped(box.right - box_.left, columns_); ++x) {
                if (!use(Cell(x, y))) {
                    return false;
                }
            }
        }
        return true;
    }

private:
    [[nodiscard]] int CellsAlong(double length) const {
        return std::max(1, static_cast<int>(std::ceil(length * perCell_)));
    }
    [[nodiscard]] int Clamped(double distance, int count) const {
        return static_cast<int>(std::clamp(distance * perCell_, 0.0, count - 1.0));
    }
    T& Cell(int x, int y) {
        return cells_[static_cast<std::size_t>(y) * static_cast<std::size_t>(columns_) +
                      static_cast<std::size_t>(x)];
    }

    SheetBox box_;
    double perCell_;
    int columns_;
    int rows_;
    std::vector<T> cells_;
};

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
