#include "analysis/TriangleTree.h"

#include "triangulation/exact/CurveOrder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace terravo {

// An outline that boxes are held against.
class TriangleTree::Asked {
public:
    explicit Asked(std::span<const PlanPoint> outline) : outline_(outline) {
        for (const PlanPoint& place : outline) {
            box_ = {std::min(box_.left, place.x), std::min(box_.bottom, place.y),
                    std::max(box_.right, place.x), std::max(box_.top, place.y)};
        }
    }

    [[nodiscard]] bool Meets(const Box& box) const {
        if (box.left > box_.right || box.right < box_.left || box.bottom > box_.top ||
            box.top < box_.bottom) {
            return false;
        }
        for (std::size_t k = 0; k < outline_.size(); ++k) {
            if (IsBeyond(box, outline_[k], outline_[k + 1 == outline_.size() ? 0 : k + 1])) {
                return false;
            }
        }
        return true;
    }

private:
    // The corner of the box that lies farthest to the left of the side; it must be to the right by
    // more than rounding could make it.
    static bool IsBeyond(const Box& box, PlanPoint from, PlanPoint to) {
        constexpr double kMargin = 8 * std::numeric_limits<double>::epsilon();
        const double dx = to.x - from.x;
        const double dy = to.y - from.y;
        const double up = dx * ((dx > 0 ? box.top : box.bottom) - from.y);
        const double across = dy * ((dy > 0 ? box.left : box.right) - from.x);
        return up - across < -kMargin * (std::fabs(up) + std::fabs(across));
    }

    std::span<const PlanPoint> outline_;
    Box box_{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
             -std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
};

TriangleTree::TriangleTree(const MeasuredSurface& surface)
    : order_(static_cast<std::size_t>(surface.triangles.count)) {
    Array1<PlanPoint> middles(surface.triangles.count);
    for (Index t = 1; t <= surface.triangles.count; ++t) {
        const SpacePoint& a = surface.Corner(t, 1);
        const SpacePoint& b = surface.Corner(t, 2);
        const SpacePoint& c = surface.Corner(t, 3);
        middles[t] = {(a.x + b.x + c.x) / 3, (a.y + b.y + c.y) / 3};
    }
    std::iota(order_.begin(), order_.end(), 1);
    SortAlongCurve(middles, order_);
    rows_.emplace_back();
    for (const Index t : order_) {
        const auto [left, right] =
            std::minmax({surface.Corner(t, 1).x, surface.Corner(t, 2).x, surface.Corner(t, 3).x});
        const auto [bottom, top] =
            std::minmax({surface.Corner(t, 1).y, surface.Corner(t, 2).y, surface.Corner(t, 3).y});
        rows_.front().push_back({left, bottom, right, top});
    }
    while (rows_.back().size() > kFan) {
        const std::vector<Box>& below = rows_.back();
        std::vector<Box> row;
        for (std::size_t i = 0; i < below.size(); i += kFan) {
            Box box = below[i];
            for (std::size_t k = i + 1; k < std::min(i + kFan, below.size()); ++k) {
                box = {std::min(box.left, below[k].left), std::min(box.bottom, below[k].bottom),
                       std::max(box.right, below[k].right), std::max(box.top, below[k].top)};
            }
            row.push_back(box);
        }
        rows_.push_back(std::move(row));
    }
}

void TriangleTree::Find(std::span<const PlanPoint> outline, std::vector<Index>& found) const {
    struct Node {
        std::size_t row;
        std::size_t number;
    };
    found.clear();
    const Asked asked(outline);
    std::vector<Node> open;
    const std::size_t top = rows_.size() - 1;
    for (std::size_t i = rows_[top].size(); i-- > 0;) {
        open.push_back({top, i});
    }
    while (!open.empty()) {
        const Node node = open.back();
        open.pop_back();
        if (!asked.Meets(rows_[node.row][node.number])) {
            continue;
        }
        if (node.row == 0) {
            found.push_back(order_[node.number]);
            continue;
        }
        const std::size_t begin = node.number * kFan;
        for (std::size_t i = std::min(begin + kFan, rows_[node.row - 1].size()); i-- > begin;) {
            open.push_back({node.row - 1, i});
        }
    }
}

} // namespace terravo
