// A table over the paper, to find by place what lies there.
//
// Data: cells of equal size over a box. Method: a place gives its cell by one multiplication.
#pragma once

#include "sheet/SheetScene.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
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

} // namespace terravo
