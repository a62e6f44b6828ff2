// Surveys to measure with: the same points on every machine and in every program.
//
// Data: point sets in one of four layouts on a square whose side grows with the root of the count,
// so that the density stays the same, at coordinates of the size of a national grid. Method: seeded
// positions; heights from a smooth terrain that is the same relative to the square at every count.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace terravo::bench {

/// How the points lie and in which order they come.
enum class Layout {
    Random, // even scatter, no order
    Grid,   // exact square grid, every row walked in the same direction
    Lines,  // parallel lines five spacings apart, walked to and fro, points a little off the line
    TurnedGrid // the grid turned by 0.3 radians, every digit kept: no four points quite on a circle
};

inline constexpr std::array kLayouts{Layout::Random, Layout::Grid, Layout::Lines,
                                     Layout::TurnedGrid};
inline constexpr std::array<Index, 4> kSizes{1000, 10000, 100000, 1000000};

/// "random", "grid", "lines" or "turned".
std::string_view Name(Layout layout);
std::optional<Layout> LayoutFromName(std::string_view name);

/// Exactly `count` points; the same ones at every call.
PointSet MakeSurvey(Layout layout, Index count);

/// The same, kept for the length of the program.
const PointSet& KeptSurvey(Layout layout, Index count);

/// Plan positions of a point set, in its order.
Array1<PlanPoint> PlanOf(const PointSet& points);

/// Digits of the numbers in a point file.
enum class Digits {
    Millimetres, // three decimals, as instruments write them
    Full         // the shortest text that gives the same double back, 16 or 17 digits
};

/// The text of a point file: a line "x,y,z" a point.
std::string PointText(const PointSet& points, Digits digits);

} // namespace terravo::bench
