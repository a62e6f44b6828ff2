// Vertices of a contour that may move along their triangle edges.
//
// Data: for each vertex its edge, from the lower end upwards, and the parts of the edge between
// which the vertex may lie. Method: the parts belong to heights no farther from the level than a
// fraction of the spacing, and keep away from the ends of the edge; so they never reach a point of
// the survey, also where the level has its very height.
#pragma once

#include "contour/ContourSet.h"
#include "contour/smoothing/LevelSpacing.h"
#include "contour/smoothing/PlanVector.h"
#include "contour/smoothing/SmoothContours.h"

#include <vector>

namespace terravo::smoothing {

struct Slider {
    PlanPoint low;   // lower end of the edge, relative to the origin of the set
    PlanPoint along; // from there to the upper end
    double rise = 0; // of the edge, > 0
    double raw = 0;  // the part at which the straight edge has the height of the level, 0 to 1
    double from = 0; // 0 < from < to < 1
    double to = 0;
    EdgeEnds ends;
    TriangleEdge edge;
    bool isCorner = false; // stays, and the line may have a corner here

    [[nodiscard]] PlanPoint At(double part) const {
        return {low.x + part * along.x, low.y + part * along.y};
    }
    [[nodiscard]] double Width() const { return to - from; }
};

/// Whether the triangle of two edges is so thin that no curve can be computed in it.
bool IsFlat(const Slider& a, const Slider& b);

/// A place from which all coordinates can be measured without an error: amid the points where they
/// are far from zero, else zero.
PlanPoint LocalOrigin(const PointSet& points);

class SliderMaker {
public:
    /// Keeps a reference to what the source refers to.
    SliderMaker(const SmoothingSource& source, const SmoothingOptions& options, PlanPoint origin);

    /// The sliders of a line.
    /// @param vertices  of a line with its repeats.
    void Make(std::span<const ContourVertex> vertices, double level, const LevelSpacing& spacing,
              std::vector<Slider>& sliders) const;

    /// Whether a line with its repeats is nothing but a point at the level, with lower ground all
    /// about it.
    [[nodiscard]] bool IsPeak(std::span<const ContourVertex> vertices, double level) const;

private:
    [[nodiscard]] bool IsBreakline(TriangleEdge edge) const;
    [[nodiscard]] PlanPoint PlaceOf(Index point) const;

    const PointSet& points_;
    const TriangleList& triangles_;
    const EdgeMarks* breaklines_; // null when they make no corners
    PlanPoint origin_;
    double fraction_;
    double limit_;
};

} // namespace terravo::smoothing
