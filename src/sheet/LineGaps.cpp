#include "sheet/LineGaps.h"

#include "sheet/LineCourse.h"
#include "sheet/PaperGrid.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

SheetBox Around(std::span<const TurnedBox> rooms) {
    SheetBox all = rooms.front().Bounds();
    for (const TurnedBox& room : rooms) {
        const SheetBox b = room.Bounds();
        all = {std::min(all.left, b.left), std::min(all.top, b.top), std::max(all.right, b.right),
               std::max(all.bottom, b.bottom)};
    }
    return all;
}

double CellFor(std::span<const TurnedBox> rooms) {
    double longest = 0;
    for (const TurnedBox& room : rooms) {
        longest = std::max({longest, room.halfLength, room.halfHeight});
    }
    const SheetBox all = Around(rooms);
    return std::max({2 * longest, all.Width() / 1000, all.Height() / 1000, 1e-3});
}

// Narrows the part from..to of a way to where its coordinate lies within -half..half.
void Narrow(double start, double end, double half, double& from, double& to) {
    const double way = end - start;
    if (way > 0 || way < 0) {
        const double a = (-half - start) / way;
        const double b = (half - start) / way;
        from = std::max(from, std::min(a, b));
        to = std::min(to, std::max(a, b));
    } else if (std::abs(start) > half) {
        to = from;
    }
}

class GapFinder {
public:
    explicit GapFinder(std::span<const TurnedBox> rooms)
        : rooms_(rooms), area_(Around(rooms)), grid_(area_, CellFor(rooms)) {
        for (std::size_t i = 0; i < rooms.size(); ++i) {
            grid_.ForEachIn(rooms[i].Bounds(), [&](std::vector<std::size_t>& bucket) {
                bucket.push_back(i);
                return true;
            });
        }
    }

    /// Adds the gaps of a line, in no order.
    void Find(const LabelLine& line, std::size_t number, std::vector<LineGap>& gaps) {
        double walked = 0;
        for (std::size_t i = 1; i < line.points.size() + (line.closed ? 1 : 0); ++i) {
            const SheetPoint a = line.points[i - 1];
            const SheetPoint b = line.points[i == line.points.size() ? 0 : i];
            const double length = std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
            ForEachPartInside(a, b, [&](double from, double to) {
                gaps.push_back({number, walked + from * length, walked + to * length});
            });
            walked += length;
        }
    }

private:
    template <class Use>
    void ForEachPartInside(SheetPoint a, SheetPoint b, Use use) {
        const SheetBox bounds{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                              std::max(a.y, b.y)};
        if (bounds.right < area_.left || bounds.left > area_.right || bounds.bottom < area_.top ||
            bounds.top > area_.bottom) {
            return;
        }
        grid_.ForEachIn(bounds, [&](const std::vector<std::size_t>& bucket) {
            for (const std::size_t i : bucket) {
                const SheetPoint start = rooms_[i].Local(a);
                const SheetPoint end = rooms_[i].Local(b);
                double from = 0;
                double to = 1;
                Narrow(start.x, end.x, rooms_[i].halfLength, from, to);
                Narrow(start.y, end.y, rooms_[i].halfHeight, from, to);
                if (from < to) {
                    use(from, to);
                }
            }
            return true;
        });
    }

    std::span<const TurnedBox> rooms_;
    SheetBox area_;
    PaperGrid<std::vector<std::size_t>> grid_;
};

void AddOwn(const LineLabel& label, const LabelLine& line, std::vector<LineGap>& gaps) {
    const double length = LengthOf(line.points, line.closed);
    gaps.push_back({label.line, label.from, std::min(label.to, length)});
    if (label.to > length) {
        gaps.push_back({label.line, 0, label.to - length});
    }
}

// Sorted, and joined where they touch.
std::vector<LineGap> Joined(std::vector<LineGap> gaps) {
    std::sort(gaps.begin(), gaps.end(), [](const LineGap& a, const LineGap& b) {
        return a.line != b.line ? a.line < b.line : a.from < b.from;
    });
    constexpr double kTouching = 1e-6; // mm
    std::vector<LineGap> joined;
    for (const LineGap& gap : gaps) {
        if (!joined.empty() && joined.back().line == gap.line &&
            gap.from <= joined.back().to + kTouching) {
            joined.back().to = std::max(joined.back().to, gap.to);
        } else {
            joined.push_back(gap);
        }
    }
    return joined;
}

} // namespace

TurnedBox RoomOf(const LineLabel& label, double width, double height) {
    return {label.middle, {std::cos(label.angle), -std::sin(label.angle)}, width / 2, height / 2};
}

std::vector<LineGap> GapsBeneath(std::span<const LabelLine> lines, std::span<const TurnedBox> rooms,
                                 std::span<const LineLabel> labels) {
    std::vector<LineGap> gaps;
    for (const LineLabel& label : labels) {
        AddOwn(label, lines[label.line], gaps);
    }
    if (!rooms.empty()) {
        GapFinder finder(rooms);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            finder.Find(lines[i], i, gaps);
        }
    }
    return Joined(std::move(gaps));
}

} // namespace terravo
