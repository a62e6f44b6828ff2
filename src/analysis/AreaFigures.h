// How large a surface is, and how much lies at or above heights.
//
// Data: a surface; heights. Method: closed forms a triangle, summed with compensation.
#pragma once

#include "analysis/MeasuredSurface.h"

#include <vector>

namespace terravo {

/// Of an empty surface everything is 0.
struct AreaFigures {
    double plan = 0;      // square data units
    double surface = 0;   // likewise, of the sloping triangles
    double perimeter = 0; // in plan, of all rims
    double meanHeight = 0;
    double meanSlope = 0; // tangent, averaged over the plan area
    double maxSlope = 0;  // tangent, of the steepest triangle with an area
    Extent x;             // of the triangles' corners, data units
    Extent y;
    Extent z;
    Index triangles = 0;
};

AreaFigures MeasureAreas(const MeasuredSurface& surface);

/// A height and what lies at or above it.
struct HypsometryRow {
    double height = 0;
    double areaAbove = 0;   // in plan
    double volumeAbove = 0; // between the surface and the plane at this height
    /// Of the band from this height up to that of the next row; in the last row all above it.
    double bandArea = 0;
    double bandVolume = 0; // of the ground in it
};

/// @param heights  increasing.
/// @return a row a height, before them one for the lowest corner where it lies lower than the
///         first height.
std::vector<HypsometryRow> MeasureHypsometry(const MeasuredSurface& surface,
                                             const std::vector<double>& heights);

} // namespace terravo
