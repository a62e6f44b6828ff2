#include "triangulation/NearbyStart.h"

#include "util/Prefetch.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

constexpr Index kSampleSize = 1024;
constexpr std::size_t kPointsPerCell = 2;
constexpr std::size_t kLargestSide = 8192;

struct Range {
    double low;
    double high;
};

// The range from the 2nd to the 98th percentile, widened by the little that an even spread has
// beyond them.
Range InnerRange(std::vector<double>& sample) {
    if (sample.empty()) {
        return {0, 0};
    }
    const std::size_t tail = sample.size() / 50;
    const auto low = sample.begin() + static_cast<std::ptrdiff_t>(tail);
    const auto high = sample.end() - 1 - static_cast<std::ptrdiff_t>(tail);
    std::nth_element(sample.begin(), low, sample.end());
    const double lowValue = *low;
    std::nth_element(sample.begin(), high, sample.end());
    const double highValue = *high;
    const double margin = (highValue - lowValue) / 24;
    return {lowValue - margin, highValue + margin};
}

double UnitOf(Range range) {
    const double unit = 1.0 / (range.high - range.low);
    return std::isfinite(unit) && unit > 0 ? unit : 0.0;
}

} // namespace

NearbyStart::NearbyStart(const Array1<PlanPoint>& coord, const TriangleList& triangles)
    : coord_(coord), triangles_(triangles), cells_(1, 1) {
    const Index stride = std::max<Index>(1, coord.UpperBound() / kSampleSize);
    std::vector<double> xs;
    std::vector<double> ys;
    for (Index i = 1; i <= coord.UpperBound(); i += stride) {
        xs.push_back(coord[i].x);
        ys.push_back(coord[i].y);
    }
    const Range rangeX = InnerRange(xs);
    const Range rangeY = InnerRange(ys);
    origin_ = {rangeX.low, rangeY.low};
    unitX_ = UnitOf(rangeX);
    unitY_ = UnitOf(rangeY);
}

std::size_t NearbyStart::CellOf(PlanPoint point) const {
    // std::max first: a not-a-number becomes 0 there.
    const double fx =
        std::min(std::max(0.0, (point.x - origin_.x) * unitX_ * sideAsDouble_), sideAsDouble_ - 1);
    const double fy =
        std::min(std::max(0.0, (point.y - origin_.y) * unitY_ * sideAsDouble_), sideAsDouble_ - 1);
    return static_cast<std::size_t>(fy) * side_ + static_cast<std::size_t>(fx);
}

Index NearbyStart::StartFor(PlanPoint point, PlanPoint previous) const {
    const Index inCell = InCell(point);
    const PlanPoint corner = coord_[triangles_.Vertex(1, inCell)];
    return SquaredDistance(point, previous) < SquaredDistance(point, corner) ? triangles_.count
                                                                             : inCell;
}

void NearbyStart::Remember(PlanPoint point, Index triangle) {
    cells_[CellOf(point)] = triangle;
    ++remembered_;
    if (remembered_ > kPointsPerCell * cells_.size() && side_ < kLargestSide) {
        Refine();
    }
}

void NearbyStart::Refine() {
    const std::size_t newSide = 2 * side_;
    std::vector<Index> finer(newSide * newSide);
    for (std::size_t row = 0; row < newSide; ++row) {
        for (std::size_t column = 0; column < newSide; ++column) {
            finer[row * newSide + column] = cells_[row / 2 * side_ + column / 2];
        }
    }
    cells_ = std::move(finer);
    side_ = newSide;
    sideAsDouble_ = static_cast<double>(newSide);
}

void NearbyStart::PrefetchCell(PlanPoint point) const {
    PrefetchLine(&cells_[CellOf(point)]);
}

} // namespace terravo
