#include "sheet/LabelRoom.h"

namespace terravo {
namespace {

constexpr double kMostCells = 16e6;
constexpr int kLadderReach = 14; // capital heights

double CellFor(const SheetBox& frame, double height) {
    return std::max(height / 4, std::sqrt(frame.Width() * frame.Height() / kMostCells));
}

} // namespace

LabelRoom::LabelRoom(const SheetBox& frame, double height, double longest)
    : frame_(frame), height_(height), cell_(CellFor(frame, height)), ink_(frame, cell_),
      ladder_(frame, 4 * cell_), buckets_(frame, std::max(2 * longest, 16 * cell_)) {}

void LabelRoom::Take(const TurnedBox& box) {
    const auto number = static_cast<std::uint32_t>(boxes_.size());
    boxes_.push_back(box);
    buckets_.ForEachIn(box.Bounds(), [&](std::vector<std::uint32_t>& bucket) {
        bucket.push_back(number);
        return true;
    });
}

void LabelRoom::TakeText(const TurnedBox& box) {
    Take(box);
    OfferLadder(box, 1);
    OfferLadder(box, -1);
}

void LabelRoom::OfferLadder(const TurnedBox& box, double side) {
    for (int away = 1; away <= kLadderReach; ++away) {
        for (double x = -box.halfLength / 3; x <= box.halfLength / 3; x += height_ / 2) {
            std::uint8_t* cell = ladder_.At(box.FromLocal({x, side * height_ * away}));
            if (cell != nullptr) {
                *cell = std::max(*cell, static_cast<std::uint8_t>(kLadderReach + 1 - away));
            }
        }
    }
}

double LabelRoom::Ladder(SheetPoint p) const {
    const std::uint8_t* cell = ladder_.At(p);
    return cell == nullptr ? 0 : static_cast<double>(*cell) / kLadderReach;
}

bool LabelRoom::IsFree(const TurnedBox& box) const {
    const SheetBox bounds = box.Bounds();
    return Contains(frame_, bounds) &&
           buckets_.ForEachIn(bounds, [&](const std::vector<std::uint32_t>& bucket) {
               return std::none_of(bucket.begin(), bucket.end(), [&](std::uint32_t number) {
                   return Overlap(boxes_[number], box);
               });
           });
}

double LabelRoom::InkBeside(const TurnedBox& text, double most) const {
    struct Row {
        double offset; // from the middle, capital heights
        double weight;
    };
    // A line cannot come between the text and its own line without crossing one of these.
    static constexpr Row kRows[] = {{-0.45, 1}, {0.45, 1}, {-0.7, 0.5}, {0.7, 0.5}};
    const int columns = std::max(1, static_cast<int>(std::ceil(2 * text.halfLength / cell_)));
    const double pitch = 2 * text.halfLength / columns;
    double covered = 0;
    for (const Row& row : kRows) {
        SheetPoint p = text.FromLocal({pitch / 2 - text.halfLength, row.offset * height_});
        int filled = 0;
        for (int i = 0; i < columns; ++i) {
            const std::uint8_t* ink = ink_.At(p);
            filled += ink != nullptr && *ink != 0 ? 1 : 0;
            p = {p.x + pitch * text.along.x, p.y + pitch * text.along.y};
        }
        covered += row.weight * filled / columns;
        if (covered >= most) {
            break;
        }
    }
    return covered;
}

} // namespace terravo
