#include "contour/smoothing/Slider.h"

#include <algorithm>

namespace terravo::smoothing {
namespace {

constexpr double kFromEnds = 0.01;   // of the edge between an end and what may be reached
constexpr double kLeastLimit = 1e-9; // of the range of heights
constexpr double kThinnest = 1e-9;   // width of a triangle by the size of its coordinates

// Numbers within a factor of two have an exact difference.
double OriginOf(const Extent& extent) {
    const double least = std::min(std::fabs(extent.min), std::fabs(extent.max));
    const double most = std::max(std::fabs(extent.min), std::fabs(extent.max));
    const bool isFar =
        extent.min <= extent.max && (extent.min > 0 || extent.max < 0) && 2 * least >= most;
    return isFar ? extent.min + (extent.max - extent.min) / 2 : 0;
}

void SetInterval(Slider& slider, double below, double above) {
    const double least = slider.raw - below / slider.rise;
    const double most = slider.raw + above / slider.rise;
    slider.from = std::max(least, kFromEnds * std::min(1.0, most));
    slider.to = std::min(most, 1 - kFromEnds * (1 - std::max(0.0, least)));
}

} // namespace

bool IsFlat(const Slider& a, const Slider& b) {
    const auto size = [](PlanPoint p) { return std::max(std::fabs(p.x), std::fabs(p.y)); };
    const double longest = std::max(size(a.along), size(b.along));
    const double farthest = std::max(size(a.low), size(b.low)) + longest;
    return std::fabs(Cross(a.along, b.along)) <= kThinnest * farthest * longest;
}

PlanPoint LocalOrigin(const PointSet& points) {
    return {OriginOf(points.extentX), OriginOf(points.extentY)};
}

SliderMaker::SliderMaker(const SmoothingSource& source, const SmoothingOptions& options,
                         PlanPoint origin)
    : points_(source.points), triangles_(source.triangles),
      breaklines_(options.keepCornersOnBreaklines ? source.constrained : nullptr), origin_(origin),
      fraction_(options.fraction),
      limit_(std::max(options.limit, kLeastLimit * (points_.extentZ.max - points_.extentZ.min))) {}

bool SliderMaker::IsBreakline(TriangleEdge edge) const {
    const auto bit = static_cast<unsigned>(edge.edge - 1);
    return breaklines_ != nullptr && ((*breaklines_)[edge.triangle] >> bit & 1U) != 0 &&
           TriangleAcross(triangles_, edge) != 0;
}

PlanPoint SliderMaker::PlaceOf(Index point) const {
    return {points_.x[point] - origin_.x, points_.y[point] - origin_.y};
}

void SliderMaker::Make(std::span<const ContourVertex> vertices, double level,
                       const LevelSpacing& spacing, std::vector<Slider>& sliders) const {
    const double below = std::min(fraction_ * spacing.below, limit_);
    const double above = std::min(fraction_ * spacing.above, limit_);
    sliders.clear();
    for (const ContourVertex& vertex : vertices) {
        Slider slider;
        slider.edge = vertex.edge;
        slider.ends = EndsOf(points_, triangles_, vertex.edge);
        slider.low = PlaceOf(slider.ends.lower);
        slider.along = PlaceOf(slider.ends.upper) - slider.low;
        slider.rise = points_.z[slider.ends.upper] - points_.z[slider.ends.lower];
        slider.raw = PartOfEdge(points_, slider.ends, level);
        SetInterval(slider, below, above);
        slider.isCorner = IsBreakline(vertex.edge);
        sliders.push_back(slider);
    }
}

bool SliderMaker::IsPeak(std::span<const ContourVertex> vertices, double level) const {
    const Index peak = EndsOf(points_, triangles_, vertices.front().edge).upper;
    return points_.z[peak] <= level &&
           std::all_of(vertices.begin(), vertices.end(), [&](const ContourVertex& vertex) {
               return EndsOf(points_, triangles_, vertex.edge).upper == peak;
           });
}

} // namespace terravo::smoothing
