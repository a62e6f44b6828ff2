// Makes the content of vector files from a surface and its contours.
//
// Data: points, triangles, contours, levels and what the user wants. Method: every coordinate is
// rounded once, where decimals are asked for, before lines are closed; vertices that fall together
// and lines that shrink to a point are left out.
#pragma once

#include "contour/ContourSet.h"
#include "contour/LevelRule.h"
#include "contour/smoothing/SmoothContours.h"
#include "export/vector/VectorContent.h"
#include "survey/Survey.h"

namespace terravo {

/// What content is made of; all outlives the call.
struct VectorSource {
    const PointSet& points;
    Index surveyed; // points 1..surveyed are of the survey, the others corners alone
    const TriangleList& triangles;
    const LevelRule& rule;
    const LevelSet& levels;                // made by the rule
    const ContourSet& contours;            // of the levels, with repeats left out, or smooth
    const ShapedSurface* shaped = nullptr; // where lines are laid into the surface
};

/// That of a surface and its contours.
inline VectorSource SourceOf(const ShownSurface& surface, const LevelRule& rule,
                             const LevelSet& levels, const ContourSet& contours) {
    return {surface.points, surface.SurveyedPoints(), surface.triangles, rule, levels, contours,
            surface.shaped};
}

/// The heights of texts that a user may ask for, data units.
inline constexpr double kLeastTextHeight = 1e-6;
inline constexpr double kMostTextHeight = 1e6;

struct VectorWish {
    VectorParts parts;
    LengthUnit unit = LengthUnit::Metre;
    std::optional<int> epsg;
    std::optional<int> decimals;      // 0 to 12; else every digit
    std::optional<double> textHeight; // data units; else 2 mm at the usual scale that fits a sheet
    Index indexEvery = 5;
    /// How the contours and bands are smoothed; none: lines as they are cut. Whoever makes the
    /// source looks at it.
    std::optional<SmoothingOptions> smoothing;
    /// How far smooth lines made straight may be from the curve, data units; none: UsualTolerance.
    std::optional<double> tolerance;
    bool fewerVertices = false; // as few as the tolerance allows
};

/// The tolerances that a user may ask for, data units.
inline constexpr double kLeastTolerance = 1e-9;
inline constexpr double kMostTolerance = 1e9;

/// 0.02 mm on paper, at the usual scale at which the points fit a sheet: data units.
double UsualTolerance(const PointSet& points, LengthUnit unit);

/// Of the smooth lines of the points.
double ToleranceOf(const VectorWish& wish, const PointSet& points);

/// Largest number of decimals that can be asked for.
inline constexpr int kMostVectorDecimals = 12;

VectorContent MakeVectorContent(const VectorSource& source, const VectorWish& wish);

} // namespace terravo
