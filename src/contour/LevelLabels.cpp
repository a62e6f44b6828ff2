#include "contour/LevelLabels.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace terravo {
namespace {

constexpr std::int32_t kSmallestLabel = 8;

std::size_t TrimmedLength(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? 0 : text.find_last_not_of(' ') - first + 1;
}

} // namespace

LevelLabels::LevelLabels(DrawSurface& surface, LevelSet& levels)
    : surface_(surface), levels_(levels), boxes_(levels.UpperBound()) {
    on_ = std::any_of(levels.begin(), levels.end(),
                      [](const LevelRecord& level) { return TrimmedLength(level.label) > 0; });
    if (!on_) {
        return;
    }
    surface.SetFontName("Courier New");
    surface.SetFontBold(true);
    surface.SetFontTransparent(true);
    for (Index k = 1; k <= levels.UpperBound(); ++k) {
        LevelRecord& level = levels[k];
        level.labelSize = std::max(level.labelSize, kSmallestLabel);
        const std::size_t length = TrimmedLength(level.label);
        if (length > 0) {
            surface.SetFontSize(static_cast<float>(level.labelSize));
            const double characters = static_cast<double>(length) + 2;
            boxes_[k].width = characters * static_cast<double>(surface.TextWidth("O"));
            boxes_[k].height = std::fabs(static_cast<double>(surface.TextHeight("O")));
        }
    }
}

void LevelLabels::PlaceLabel(Index k, double x, double y) {
    LabelBox& box = boxes_[k];
    if (!(box.width > 0) || box.placed) {
        return;
    }
    const auto right = static_cast<float>(x + box.width);
    const auto bottom = static_cast<float>(y - box.height);
    if (right > surface_.ScaleLeft() + surface_.ScaleWidth() ||
        surface_.ScaleTop() + surface_.ScaleHeight() > bottom) {
        return;
    }
    if (!IsClear(x, right, y, bottom)) {
        return;
    }
    box.left = static_cast<float>(x);
    box.right = right;
    box.bottom = bottom;
    box.top = static_cast<float>(y);
    box.placed = true;
    box.textX = x;
    box.textY = y;
    placed_.Append(k);
}

bool LevelLabels::IsClear(double x, float right, double y, float bottom) const {
    const auto clearOf = [&](const LabelBox& other) {
        return right <= other.left || x >= static_cast<double>(other.right) ||
               y <= static_cast<double>(other.bottom) || bottom >= other.top;
    };
    if (!std::all_of(placed_.begin(), placed_.end(), [&](Index j) { return clearOf(boxes_[j]); })) {
        return false;
    }
    // All boxes still unplaced, but for the candidate's own, are the same zero box.
    const bool anotherUnplaced = boxes_.UpperBound() - placed_.UpperBound() > 1;
    return !anotherUnplaced || clearOf(LabelBox{});
}

void LevelLabels::DrawLabels() {
    for (Index k = 1; k <= levels_.UpperBound(); ++k) {
        const LabelBox& box = boxes_[k];
        if (box.placed) {
            surface_.SetForeColor(levels_[k].labelColour);
            surface_.SetFontSize(static_cast<float>(levels_[k].labelSize));
            surface_.SetCurrentX(box.textX);
            surface_.SetCurrentY(box.textY);
            surface_.Print(levels_[k].label, NewLine::Yes);
        }
    }
}

} // namespace terravo
